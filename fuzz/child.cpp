#include "fuzz/child.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

/* The counters of what was compiled for a fuzzer; elsewhere there are none. */
extern "C" __attribute__((weak)) std::uint8_t __start___sancov_cntrs[];
extern "C" __attribute__((weak)) std::uint8_t __stop___sancov_cntrs[];

namespace {

constexpr unsigned LONGEST_RUN = 20; /* seconds */
constexpr rlim_t LARGEST_FILE = 256u << 20;

std::uint8_t *shared; /* as many counters, seen by parent and child */

std::size_t countersSize() {
    return static_cast<std::size_t>(__stop___sancov_cntrs - __start___sancov_cntrs);
}

[[noreturn]] void giveUp(const char *what) {
    std::perror(what);
    std::abort();
}

/* The last thing that the child does, before anything looks for leaks: what is loaded lives until
   the end by design. */
void leave(int status, void *) {
    std::fflush(nullptr);
    if (shared != nullptr)
        std::memcpy(shared, __start___sancov_cntrs, countersSize());
    _exit(status);
}

/* Where the system lets nobody do so, the child stays in the open. */
void closeIn() {
    const std::string out = workDirectory() + "/out";
    if (chdir(out.c_str()) != 0)
        giveUp(out.c_str());
    if (std::getenv("FUZZ_OPEN") != nullptr || (geteuid() != 0 && unshare(CLONE_NEWUSER) != 0))
        return;
    if (chroot(workDirectory().c_str()) == 0 && chdir("/out") != 0)
        giveUp("/out");
}

[[noreturn]] void beChild(int said, int (*run)()) {
    for (int number : {SIGALRM, SIGABRT, SIGXFSZ, SIGTERM, SIGINT})
        signal(number, SIG_DFL);
    const rlimit size{LARGEST_FILE, LARGEST_FILE};
    setrlimit(RLIMIT_FSIZE, &size);
    alarm(LONGEST_RUN);
    if (dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO) < 0 || dup2(said, STDERR_FILENO) < 0)
        giveUp("/dev/null");
    closeIn();
    on_exit(leave, nullptr);
    std::exit(run());
}

void show(int said) {
    char piece[4096];
    lseek(said, 0, SEEK_SET);
    for (ssize_t count; (count = read(said, piece, sizeof piece)) > 0;)
        if (write(STDERR_FILENO, piece, static_cast<std::size_t>(count)) != count)
            return;
}

void shareCounters() {
    if (shared != nullptr || countersSize() == 0)
        return;
    void *memory =
        mmap(nullptr, countersSize(), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        giveUp("mmap");
    shared = static_cast<std::uint8_t *>(memory);
}

} // namespace

void inChild(int worstStatus, int (*run)()) {
    shareCounters();
    fs::remove_all(workDirectory() + "/out");
    fs::create_directory(workDirectory() + "/out");
    const int said = memfd_create("said", 0);
    std::fflush(nullptr);
    const pid_t child = fork();
    if (said < 0 || child < 0)
        giveUp("fork");
    if (child == 0)
        beChild(said, run);
    int status = 0;
    while (waitpid(child, &status, 0) != child)
        if (errno != EINTR) /* the fuzzer looks at its clock from time to time */
            giveUp("waitpid");
    if (!WIFEXITED(status) || WEXITSTATUS(status) > worstStatus) {
        show(said);
        std::fprintf(stderr, "The process ended %s %d.\n",
                     WIFEXITED(status) ? "with status" : "by signal",
                     WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status));
        std::abort();
    }
    close(said);
    if (shared != nullptr)
        std::memcpy(__start___sancov_cntrs, shared, countersSize());
}

const std::string &workDirectory() {
    static const struct Directory {
        std::string path = fs::temp_directory_path() / "velmo_fuzz_XXXXXX";
        pid_t owner = getpid();
        Directory() {
            if (mkdtemp(path.data()) == nullptr)
                giveUp(path.c_str());
        }
        ~Directory() {
            std::error_code failure;
            if (getpid() == owner)
                fs::remove_all(path, failure);
        }
    } directory;
    return directory.path;
}

void writeInput(const std::string &name, const void *octets, std::size_t length) {
    const std::string path = workDirectory() + "/" + name;
    std::FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr || std::fwrite(octets, 1, length, file) != length || std::fclose(file) != 0)
        giveUp(path.c_str());
}

void copyTrees(const char *from) {
    static bool done = false;
    if (!done)
        fs::copy(from, workDirectory() + "/trees");
    done = true;
}

int runMain(int (*mainOf)(int argc, char **argv), std::vector<std::string> words) {
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    return mainOf(static_cast<int>(words.size()), argv.data());
}
