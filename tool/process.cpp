#include "tool/process.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <map>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {

namespace {

bool redirect(const std::string &file, int stream) {
    if (file.empty())
        return true;
    const int to = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    return to >= 0 && dup2(to, stream) >= 0 && close(to) == 0;
}

/* In the child: becomes the command. */
[[noreturn]] void become(const Command &command) {
    std::vector<char *> words;
    for (const std::string &word : command.words)
        words.push_back(const_cast<char *>(word.c_str())); /* exec changes nothing */
    words.push_back(nullptr);
    std::signal(SIGINT, SIG_DFL);
    if (redirect(command.output, STDOUT_FILENO) && redirect(command.errors, STDERR_FILENO) &&
        (command.directory.empty() || chdir(command.directory.c_str()) == 0))
        execvp(words.front(), words.data());
    std::perror(words.front());
    _exit(NOT_STARTED);
}

pid_t start(const Command &command) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
        become(command);
    if (child < 0)
        std::perror("fork");
    return child;
}

int statusOf(int wait) {
    return WIFEXITED(wait) ? WEXITSTATUS(wait) : KILLED;
}

int waitFor(pid_t child) {
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return NOT_STARTED;
    return statusOf(status);
}

} // namespace

int run(const Command &command) {
    return waitFor(start(command));
}

std::size_t runAll(const std::vector<Command> &commands) {
    const std::size_t most = std::max(1u, std::thread::hardware_concurrency());
    std::map<pid_t, std::size_t> running;
    std::size_t next = 0, failed = commands.size();
    while (!running.empty() || (next < commands.size() && failed == commands.size())) {
        if (running.size() < most && next < commands.size() && failed == commands.size()) {
            const pid_t child = start(commands[next]);
            if (child < 0)
                failed = next;
            else
                running.emplace(child, next);
            ++next;
            continue;
        }
        int status = 0;
        const pid_t child = wait(&status);
        const auto found = running.find(child);
        if (found == running.end())
            return std::min(failed, commands.size() - 1);
        if (statusOf(status) != 0)
            failed = std::min(failed, found->second);
        running.erase(found);
    }
    return failed;
}

int runApart(const std::function<int()> &function) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int status = function();
        std::fflush(nullptr);
        _exit(status);
    }
    return waitFor(child);
}

} // namespace tool
