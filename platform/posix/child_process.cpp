#include "platform/child_process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

const ProgramPlaces programPlaces{':', ""};

std::optional<int> runProgram(const std::vector<std::string>& arguments) {
    std::vector<std::string> texts = arguments;
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    pid_t process = 0;
    if (posix_spawn(&process, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0) {
        return std::nullopt;
    }
    int status = 0;
    if (waitpid(process, &status, 0) != process) {
        return std::nullopt;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace platform
