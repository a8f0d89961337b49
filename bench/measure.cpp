#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/* Runs a command with its standard output dropped and prints its seconds and its peak memory in
   megabytes; the exit status is that of the command. */
int main(int argc, char **argv) {
    if (argc < 2) {
        std::fputs("usage: measure COMMAND [ARGUMENT ...]\n", stderr);
        return 1;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        execvp(argv[1], argv + 1);
        std::perror(argv[1]);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) {
        std::perror("measure");
        return 1;
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%.2f %.1f\n", seconds.count(), static_cast<double>(usage.ru_maxrss) / 1024);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
