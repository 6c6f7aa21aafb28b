# Gives Doxygen what the headers' comments hold: the comment at the head of a file becomes that file's,
# indented examples become code, for which Doxygen wants more space, and a code in quotes that begins
# with # does not ask for a link.
NR == 1 { in_head = /^\/\/ /; if (in_head) print "/// \\file" }
in_head && !/^\/\// { in_head = 0 }
in_head { sub(/^\/\//, "///") }

/^ *\/\/\/$/ { after_gap = 1; print; next }
/^ *\/\/\/   / && after_gap { sub(/\/\/\//, "///    "); print; next }
!/^ *\/\/\/   / { after_gap = 0 }
{ gsub(/'#/, "'\\#"); print }
