#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "driver/driver.h"
#include "show/show.h"
#include "tests/faults/faults.h"

/* Runs a tool again and again, each time with another allocation, or another call for output, that
   fails: it ends with its status for that and a message, leaves no tree but whole ones, and no file
   beside.

   usage: PROGRAM MOST-RUNS TOOL ARGUMENT ...        in a directory that may be written to

   MOST-RUNS bounds the runs of each kind; 0 stands for all. */

int asntree_main(int argc, char **argv);
int browse_main(int argc, char **argv);
int tool_main(int argc, char **argv);
extern "C" int message_main(int argc, char **argv);

namespace {

/* A program made by velmo-tool goes on with the next message, and gives all memory back. */
struct Tool {
    const char *name;
    int (*main)(int argc, char **argv);
    int failed; /* status if something failed */
    bool givesBack;
};
constexpr Tool tools[] = {
    {"asntree", asntree_main, 2, false},  {"velmo", velmo_main, 2, false},
    {"velmo-show", velmo_show, 2, false}, {"velmo-browse", browse_main, 2, false},
    {"velmo-tool", tool_main, 2, false},  {"message", message_main, 1, true},
};

namespace fs = std::filesystem;

struct Run {
    int status = 0; /* as that of a shell */
    unsigned long calls = 0;
    std::string said;
};

unsigned long *shared; /* what the child counted */
int faults;

/* The end of a tool's work. What is loaded lives until then by design, unless the tool gives it
 * back. */
void leave(int status, void *tool) {
    std::fflush(nullptr);
    disarmFaults();
    if (!static_cast<const Tool *>(tool)->givesBack)
        _exit(status);
}

[[noreturn]] void beTool(const Tool &tool, Fault fault, unsigned long number, int argc,
                         char **argv) {
    const int said = open("said", O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (dup2(said, STDERR_FILENO) < 0 || dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO) < 0)
        _exit(99);
    on_exit(leave, const_cast<Tool *>(&tool));
    armFaults(fault, number, *shared);
    std::exit(tool.main(argc, argv));
}

Run runTool(const Tool &tool, Fault fault, unsigned long number, int argc, char **argv) {
    Run run;
    std::fflush(nullptr);
    *shared = 0;
    const pid_t child = fork();
    if (child == 0)
        beTool(tool, fault, number, argc, argv);
    int status = 0;
    waitpid(child, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.calls = *shared;
    std::ifstream said("said");
    run.said.assign(std::istreambuf_iterator<char>(said), {});
    return run;
}

void fail(Fault fault, unsigned long number, const Run &run, const std::string &what) {
    std::printf("%s %lu fails: %s, status %d, \"%s\"\n",
                fault == Fault::Allocation ? "allocation" : "output", number, what.c_str(),
                run.status, run.said.c_str());
    ++faults;
}

std::vector<fs::path> outputs() {
    std::vector<fs::path> files;
    for (const auto &entry : fs::directory_iterator("out"))
        files.push_back(entry.path());
    return files;
}

void check(const Tool &tool, Fault fault, unsigned long number, const Run &run) {
    if (run.status != tool.failed)
        fail(fault, number, run, "another end than with a message");
    else if (run.said.find_first_not_of('\n') == std::string::npos)
        fail(fault, number, run, "not a word");
    else if (run.said.find("Sanitizer") != std::string::npos)
        fail(fault, number, run, "a finding");
    for (const fs::path &file : outputs())
        if (file.extension() == ".new")
            fail(fault, number, run, "left behind: " + file.string());
}

/* Trees of a run that failed are those of a run that didn't. */
void compareTrees(Fault fault, unsigned long number, const Run &run) {
    for (const fs::path &file : outputs())
        if (file.extension() == ".stx" &&
            fs::file_size(file) != fs::file_size("whole" / file.filename()))
            fail(fault, number, run, "half a tree: " + file.string());
}

void runAll(const Tool &tool, Fault fault, unsigned long most, int argc, char **argv) {
    fs::remove_all("out");
    fs::create_directory("out");
    const Run sound = runTool(tool, fault, 0, argc, argv);
    if (sound.status != 0 || sound.calls == 0)
        fail(fault, 0, sound, "no sound run");
    fs::remove_all("whole");
    fs::rename("out", "whole");
    const unsigned long step = most == 0 ? 1 : std::max(1ul, sound.calls / most);
    unsigned long runs = 0;
    for (unsigned long number = 1; number <= sound.calls && faults < 10; number += step, ++runs) {
        fs::remove_all("out");
        fs::create_directory("out");
        const Run run = runTool(tool, fault, number, argc, argv);
        check(tool, fault, number, run);
        compareTrees(fault, number, run);
    }
    std::printf("%s: %lu of %lu %s\n", argv[0], runs, sound.calls,
                fault == Fault::Allocation ? "allocations" : "calls for output");
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3)
        return 2;
    shared = static_cast<unsigned long *>(
        mmap(nullptr, sizeof *shared, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const unsigned long most = std::strtoul(argv[1], nullptr, 10);
    const auto *const tool =
        std::find_if(std::begin(tools), std::end(tools),
                     [&](const Tool &known) { return argv[2] == std::string(known.name); });
    if (tool == std::end(tools))
        return 2;
    runAll(*tool, Fault::Output, most, argc - 2, argv + 2);
    runAll(*tool, Fault::Allocation, most, argc - 2, argv + 2);
    return faults == 0 ? 0 : 1;
}
