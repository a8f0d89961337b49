#include "tests/support/golden.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string readFile(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string update(const fs::path &path, const std::string &name, const std::string &masked) {
    if (!fs::exists(path))
        std::fprintf(stderr, "MISSING %s: written\n", name.c_str());
    else if (std::string change = differenceOf(readFile(path), masked); !change.empty())
        std::fprintf(stderr, "CHANGED %s\n%s", name.c_str(), change.c_str());
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << masked;
    out.close();
    return out ? "" : "cannot write " + name;
}

} // namespace

std::string differenceOf(const std::string &before, const std::string &after) {
    if (before == after)
        return "";
    WorkDir dir;
    dir.write("expected", before);
    dir.write("actual", after);
    return runProgram(dir, "diff", {"-u", "expected", "actual"}).out;
}

std::string compareGolden(const std::string &directory, const std::string &name,
                          const std::string &text) {
    const fs::path path = fs::path(directory) / name;
    const std::string masked = maskTimes(text);
    if (std::getenv("VELMO_UPDATE_GOLDEN") != nullptr)
        return update(path, name, masked);
    if (!fs::exists(path))
        return "MISSING " + name + ": tests/update-golden writes it";
    return differenceOf(readFile(path), masked);
}

std::string compileC(const WorkDir &dir, const std::string &compiler, const std::string &file,
                     const std::vector<std::string> &flags) {
    /* A check of the syntax alone would miss what is only warned of when code is made. */
    WorkDir objects;
    std::vector<std::string> arguments = flags;
    arguments.insert(arguments.end(), {"-c", "-o", objects.path("out.o"), "-x",
                                       compiler.ends_with("++") ? "c++" : "c", file});
    ProgramRun run = runProgram(dir, compiler, arguments);
    std::string messages = run.out + run.err;
    if (run.status != 0 && messages.empty())
        messages = compiler + " ended with status " + std::to_string(run.status);
    return messages;
}
