# Writes Page.cpp, which holds the report's page without its data:
#   cmake -D folder=... -D "styles=..." -D "modules=..." -D output=... -P page.cmake
# In page.html, {{styles}} and {{modules}} stand for the contents of these files, and {{data}} for
# the data. All modules become one, so imports are removed, and `export` before declarations too.

# Reads the files and joins them.
function(join output)
  set(text "")
  foreach(name IN LISTS ARGN)
    file(READ "${folder}/${name}" part)
    string(APPEND text "${part}")
  endforeach()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

join(page page.html)
join(style_text ${styles})
join(module_text ${modules})
string(REGEX REPLACE "(^|\n)import [^;]*;" "\\1" module_text "${module_text}")
string(REGEX REPLACE "(^|\n)export " "\\1" module_text "${module_text}")
string(REPLACE "{{styles}}" "${style_text}" page "${page}")
string(REPLACE "{{modules}}" "${module_text}" page "${page}")
string(FIND "${page}" "{{data}}" at)
string(SUBSTRING "${page}" 0 ${at} before)
math(EXPR after_at "${at} + 8")
string(SUBSTRING "${page}" ${after_at} -1 after)

file(WRITE "${output}" "#include \"mrvsim/report/Page.h\"

namespace simulator {

const std::string_view kPageBeforeData = R\"PAGE(${before})PAGE\";

const std::string_view kPageAfterData = R\"PAGE(${after})PAGE\";

}  // namespace simulator
")
