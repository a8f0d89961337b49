#include "tests/support/runtool.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/* Seconds. Programs that count what runs are slow. */
const unsigned longestRun = std::getenv("VELMO_COUNTS") == nullptr ? 60 : 600;

[[noreturn]] void giveUp(const char *what) {
    std::perror(what);
    std::abort();
}

std::string readFile(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void redirect(int descriptor, const std::string &path) {
    int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0)
        giveUp(path.c_str());
    close(file);
}

[[noreturn]] void becomeProgram(const WorkDir &dir, const std::string &out, const std::string &err,
                                const std::vector<char *> &argv) {
    if (chdir(dir.path().c_str()) != 0)
        giveUp(dir.path().c_str());
    redirect(STDOUT_FILENO, out);
    redirect(STDERR_FILENO, err);
    alarm(longestRun);
    execvp(argv[0], argv.data());
    giveUp(argv[0]);
}

} // namespace

WorkDir::WorkDir() {
    path_ = (fs::temp_directory_path() / "velmo_XXXXXX").string();
    if (mkdtemp(path_.data()) == nullptr)
        giveUp(path_.c_str());
}

WorkDir::~WorkDir() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void WorkDir::makeDir(const std::string &name) const {
    fs::create_directories(path(name));
}

void WorkDir::write(const std::string &name, const std::string &text) const {
    std::ofstream(path(name), std::ios::binary) << text;
}

std::string WorkDir::read(const std::string &name) const {
    return readFile(path(name));
}

bool WorkDir::has(const std::string &name) const {
    return fs::exists(path(name));
}

std::vector<std::string> WorkDir::files() const {
    std::vector<std::string> names;
    for (const auto &entry : fs::recursive_directory_iterator(path_))
        if (!entry.is_directory())
            names.push_back(fs::relative(entry.path(), path_).string());
    std::sort(names.begin(), names.end());
    return names;
}

ProgramRun runProgram(const WorkDir &dir, const std::string &program,
                      const std::vector<std::string> &arguments) {
    WorkDir streams;
    std::string out = streams.path("out");
    std::string err = streams.path("err");
    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t child = fork();
    if (child < 0)
        giveUp("fork");
    if (child == 0)
        becomeProgram(dir, out, err, argv);
    int status = 0;
    if (waitpid(child, &status, 0) != child)
        giveUp("waitpid");
    ProgramRun run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.out = readFile(out);
    run.err = readFile(err);
    return run;
}

namespace {

/* Length of a time stamp at `start`, as the pattern says with "9" for one or more digits; 0 if
   there is none. */
std::size_t stampLength(const std::string &text, std::size_t start) {
    std::size_t place = start;
    for (const char *p = "on 9.9.9 at 9:9.9"; *p != '\0'; ++p) {
        std::size_t before = place;
        if (*p == '9')
            while (place < text.size() &&
                   std::isdigit(static_cast<unsigned char>(text[place])) != 0)
                ++place;
        else if (place < text.size() && text[place] == *p)
            ++place;
        if (place == before)
            return 0;
    }
    return place - start;
}

} // namespace

std::string maskTimes(const std::string &text) {
    std::string masked;
    for (std::size_t place = 0; place < text.size();) {
        std::size_t length = stampLength(text, place);
        masked += length > 0 ? "TIME" : text.substr(place, 1);
        place += std::max<std::size_t>(length, 1);
    }
    return masked;
}
