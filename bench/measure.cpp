#include <cstdio>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

/* Runs a command with its standard output dropped and prints its seconds of processor time, which
   other programs hardly disturb, and its peak memory in megabytes; the exit status is that of the
   command. */
int main(int argc, char **argv) {
    if (argc < 2) {
        std::fputs("usage: measure COMMAND [ARGUMENT ...]\n", stderr);
        return 1;
    }
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
    const double spent = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    std::printf("%.2f %.1f\n", spent, static_cast<double>(usage.ru_maxrss) / 1024);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
