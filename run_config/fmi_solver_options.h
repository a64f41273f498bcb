#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace run_config {

/// FMU parameters by name, in ascending byte order of the names; the values are texts whatever the
/// parameter's type.
using FmuParameterMap = std::map<std::string, std::string>;

/// The options of one solver, filled from its command line. The getters hand out copies.
class FmiSolverOptions {
  public:
    /// Fills the options from the tokens of a command line: the FMU's path and then, in any order,
    ///
    ///     -nolocal               includeLocal() becomes false
    ///     -noarrayinputs         arrayInputs() becomes false
    ///     -outputsarearrays      outputsAreArrays() becomes true
    ///     -fmutype KIND          the kind of FMU that the user expects
    ///     -parameter NAME VALUE  one FMU parameter; a later value replaces an earlier one
    ///     -parameterfile PATH    FMU parameters from a file; then "-parameter" is ignored
    ///     -instance NAME         tells this run's files from those of other runs of the model
    ///
    /// A name, kind or path that begins with "-" counts as missing; an option that lacks its
    /// arguments and every other token are skipped without a word. What happens with parameter
    /// files is told on standard output.
    ///
    /// @param argc number of tokens
    /// @param argv the tokens, borrowed for the call; no terminating null entry is needed
    /// @return 0
    /// @throws std::runtime_error when there is no token, and for an instance name that cannot be
    ///         part of the names of files; the standard library's exceptions when memory runs out
    int parseArguments(int argc, char** argv);

    /// Adds the parameters of an FMU parameters file (see parameters_file.h) to parameters().
    ///
    /// @param path the file, a narrow path in the code page of the process
    /// @return true when the file was read; false, after a line on standard output and with nothing
    ///         stored, when it is no parameters file
    bool readParametersFile(const std::string& path);

    /// Path of the FMU, the first token.
    [[nodiscard]] std::string fmuPath() const { return fmuPath_; }

    /// True unless "-nolocal" was given.
    [[nodiscard]] bool includeLocal() const { return includeLocal_; }

    /// True unless "-noarrayinputs" was given: vectors are set element by element.
    [[nodiscard]] bool arrayInputs() const { return arrayInputs_; }

    /// True when "-outputsarearrays" was given: outputs are read element by element.
    [[nodiscard]] bool outputsAreArrays() const { return outputsAreArrays_; }

    /// Declared kind of the FMU, empty when none was declared.
    [[nodiscard]] std::string fmuType() const { return fmuType_; }

    /// Name of the run, empty when none was given.
    [[nodiscard]] std::string instance() const { return instance_; }

    /// The FMU parameters given on the command line and in parameter files.
    [[nodiscard]] FmuParameterMap parameters() const { return parameters_; }

  private:
    using Tokens = std::vector<std::string_view>;

    void applyOption(const Tokens& tokens, std::size_t index, bool fileGiven);
    void applyFmuType(const Tokens& tokens, std::size_t index);
    void applyParameter(const Tokens& tokens, std::size_t index, bool fileGiven);
    void applyInstance(const Tokens& tokens, std::size_t index);
    void applyParameterFile(const Tokens& tokens, std::size_t index);

    std::string fmuPath_;
    bool includeLocal_ = true;
    bool arrayInputs_ = true;
    bool outputsAreArrays_ = false;
    std::string fmuType_;
    std::string instance_;
    FmuParameterMap parameters_;
};

} // namespace run_config
