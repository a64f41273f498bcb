// Makes the binary that it is part of depend on the library beside it, from loading on.
#include "tests/fmus/scripted/needed_library.h"
#include "tests/fmus/scripted/slave_library.h"

namespace {

[[maybe_unused]] const bool recorded = [] {
    SlaveLibrary::record("needed library answers " + std::to_string(neededNumber()));
    return true;
}();

} // namespace
