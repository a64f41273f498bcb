#include "support/withheld_file.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace test_support {

namespace {

constexpr uid_t nobody = 65534;

} // namespace

const char* const WithheldFile::reason = "no permission to read the file ";

WithheldFile::WithheldFile(const std::string& path) : before_(::geteuid()) {
    const bool isSuperuser = before_ == 0;
    if (::chmod(path.c_str(), 0) != 0 || (isSuperuser && ::seteuid(nobody) != 0)) {
        throw std::runtime_error("cannot withhold " + path);
    }
}

WithheldFile::~WithheldFile() {
    if (::seteuid(static_cast<uid_t>(before_)) != 0) {
        std::abort(); // Every test after this one would be another user's.
    }
}

} // namespace test_support
