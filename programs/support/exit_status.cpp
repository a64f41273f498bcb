#include "programs/support/exit_status.h"

#include "platform/terminal.h"
#include "programs/support/input_error.h"
#include "programs/support/terminal_text.h"

#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>
#include <system_error>

namespace program_support {
namespace {

int complain(const std::string& name, const std::string& problem, int status) {
    std::cerr << name + ": " + problem + "\n" << std::flush;
    return status;
}

int statusOf(const std::string& name, const std::function<int()>& body) {
    try {
        return body();
    } catch (const InputError& error) {
        return complain(name, error.what(), inputErrorStatus);
    } catch (const std::exception& error) {
        return complain(name, error.what(), failedStatus);
    }
}

/// Empty when all that was printed is where it was to go; else why not.
std::string outputProblem() {
    errno = 0;
    std::cout.flush();
    const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && !std::cout.fail();
    if (written) {
        return {};
    }
    if (errno == 0) { // An earlier write failed; another one tells why.
        std::clearerr(stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
    return "cannot write to standard output" +
           (errno == 0 ? std::string() : ": " + std::generic_category().message(errno)) +
           "; make room, or send it elsewhere";
}

} // namespace

std::string exitStatusHelp(const std::string& what) {
    return "Exit status: 0 after success, 1 when " + what +
           " failed, 2 for input that cannot be used, 130 when the run was ended early.";
}

int exitStatusOf(const std::string& name, const std::function<int()>& body) {
    platform::holdStandardStreams();
    const TerminalStream output(std::cout);
    const TerminalStream errors(std::cerr);
    const int status = statusOf(name, body);
    const auto problem = outputProblem();
    return problem.empty() ? status : complain(name, problem, failedStatus);
}

} // namespace program_support
