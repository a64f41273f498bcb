#include "platform/windows/native_handle.h"
#include "support/withheld_file.h"

#include <stdexcept>
#include <windows.h>

namespace test_support {

const char* const WithheldFile::reason = "another program is using the file ";

WithheldFile::WithheldFile(const std::string& path)
    : before_(reinterpret_cast<std::intptr_t>(CreateFileA(
          path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    if (platform::native(before_) == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot withhold " + path);
    }
}

WithheldFile::~WithheldFile() {
    CloseHandle(platform::native(before_));
}

} // namespace test_support
