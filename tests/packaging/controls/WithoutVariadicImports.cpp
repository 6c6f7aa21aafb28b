// Takes the place of the loader's function: imports take variable arguments as Linux passes them.
#include "simulator/loader/VariadicImports.h"

void* simulator::asTheMacCalls(std::string_view, void* function) { return function; }
