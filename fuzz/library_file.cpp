/// Files of libraries, those of both systems: what they say about themselves is read or refused.
#include "platform/library_file.h"

#include "fuzz/fuzz_support.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = fuzz::Bytes(data, size).takeRest();
    for (const std::string& name : platform::importsOfWindowsLibrary(file)) {
        fuzz::require(name.size() <= file.size() && name.size() <= 260, "a name is in the file");
    }
    const auto fault = platform::faultOfLinuxLibrary(file);
    fuzz::require(!fault || !fault->empty(), "a fault has a reason");
    return 0;
}
