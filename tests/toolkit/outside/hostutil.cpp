// Succeeds if numbers become text and text is matched; needs nothing of the host or of the
// platform.
#include "hostutil/ImageModes.h"
#include "hostutil/Strings.h"

int main() {
  unsigned char text[256] = {};
  DoubleToString(text, 1, 1.25);
  return HostStringMatch(text, ".3", false) == 1 && CSPlanesFromMode(3, 0) == 3 ? 0 : 1;
}
