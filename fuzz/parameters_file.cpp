/// FMU parameters files: read or refused as a whole.
#include "fuzz/fuzz_support.h"
#include "platform/temporary_directory.h"
#include "run_config/fmi_solver_options.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const platform::TemporaryDirectory scratch("fuzz_");
    fuzz::silenceStandardOutput();
    const auto file = scratch / "parameters.xml";
    fuzz::writeFile(file, fuzz::Bytes(data, size).takeRest());
    run_config::FmiSolverOptions options;
    const bool read = options.readParametersFile(file.string());
    const auto parameters = options.parameters();
    fuzz::require(read || parameters.empty(), "a refused file leaves nothing behind");
    fuzz::require(options.readParametersFile(file.string()) == read &&
                      options.parameters() == parameters,
                  "reading again changes nothing");
    return 0;
}
