#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <sstream>

#include <unistd.h>

#include "tool/describe.h"
#include "tool/options.h"
#include "tool/process.h"

/* velmo-tool: makes a program from ASN.1 modules that prints, checks, converts and encodes their
   messages. It runs asntree, velmo and a C compiler; what the program has to know besides stands in
   a source that is written here from the same trees. */

namespace {

using namespace tool;
namespace fs = std::filesystem;

enum ExitStatus { STATUS_GOOD = 0, STATUS_USAGE = 1, STATUS_ERRORS = 2 };

/* Where things are. All paths are absolute, since commands run in other directories. */
struct Places {
    fs::path programs; /* asntree and velmo */
    fs::path layer;    /* sources of the run-time layer */
    fs::path work;
    fs::path entryTrees; /* trees with the entries that were asked for */
    fs::path trees;      /* trees with all definitions as entries */
    fs::path sources;
    fs::path list;        /* of the entries that were asked for */
    bool passing = false; /* `work` goes at the end */
};

bool complain(const std::string &text) {
    std::fprintf(stderr, "velmo-tool: %s\n", text.c_str());
    return false;
}

bool writeFile(const fs::path &path, const std::string &text) {
    std::FILE *const file = std::fopen(path.c_str(), "w");
    const bool written =
        file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool closed = file != nullptr && std::fclose(file) == 0;
    return (written && closed) || complain("can't write " + path.string());
}

/* --- places --- */

/* The layer is installed beside the program; where the program was built there is a link to it. */
bool findPlaces(Places &places) {
    std::error_code none;
    places.programs = fs::read_symlink("/proc/self/exe", none).parent_path();
    if (places.programs.empty())
        return complain("can't find out where this program lies");
    for (const char *layer : {"../share/velmo/rts", "share/velmo/rts"}) {
        places.layer = places.programs / layer;
        if (fs::exists(places.layer / "asntool.h", none))
            return true;
    }
    return complain("the sources of the run-time layer are not at " + places.layer.string());
}

/* A directory that is kept shows by its list of entries that it may be made again: what others have
   in theirs is not removed. */
bool isOwn(const fs::path &directory, const fs::path &list) {
    std::error_code none;
    return !fs::exists(directory, none) || fs::is_empty(directory, none) || fs::exists(list, none);
}

bool makeWorkplace(Places &places, const Options &options) {
    std::error_code failure;
    if (options.keep.empty()) {
        std::string name = (fs::temp_directory_path(failure) / "velmo-tool-XXXXXX").string();
        if (failure || mkdtemp(name.data()) == nullptr)
            return complain("can't make a directory for temporary files: " + name);
        places.work = name;
        places.passing = true;
    } else {
        places.work = fs::absolute(options.keep);
    }
    places.list = places.work / "entries.txt";
    if (!isOwn(places.work, places.list))
        return complain(places.work.string() + " is not empty, and not of an earlier run");
    places.entryTrees = places.work / "entries";
    places.trees = places.work / "trees";
    places.sources = places.work / "c";
    for (const fs::path &directory : {places.entryTrees, places.trees, places.sources}) {
        fs::remove_all(directory, failure);
        if (!fs::create_directories(directory, failure))
            return complain("can't make the directory " + directory.string());
    }
    return writeFile(places.list, "");
}

/* --- steps --- */

/* Runs a command. What it says on `quiet` streams is shown only if it fails. */
bool runStep(const Options &options, const Places &places, Command command, bool errorsToo) {
    if (options.verbose) {
        std::string line;
        for (const std::string &word : command.words)
            line += (line.empty() ? "" : " ") + word;
        std::printf("%s\n", line.c_str());
    }
    command.output = (places.work / "output").string();
    if (errorsToo)
        command.errors = (places.work / "errors").string();
    const int status = run(command);
    if (status == 0)
        return true;
    for (const std::string &file : {command.output, command.errors})
        if (!file.empty())
            std::fputs((std::stringstream() << std::ifstream(file).rdbuf()).str().c_str(), stderr);
    return complain(fs::path(command.words.front()).filename().string() + " failed");
}

std::string treesOption(const fs::path &directory) {
    return "-S=" + directory.string() + "/";
}

/* Compiles the modules twice: first as they are asked for, which tells the entries, then with all
   definitions as entries and with what the program needs of generated code. */
bool makeTrees(const Options &options, const Places &places) {
    Command first;
    first.words = {(places.programs / "asntree").string(), "-DEFINITELEN=YES"};
    first.words.insert(first.words.end(), options.compiled.begin(), options.compiled.end());
    Command second = first;
    const char *const needed[] = {
        "-C=./",          "-H=./",          "-TYP=YES",      "-DEF=YES",    "-TAB=NO",
        "-TABF=NO",       "-COD=1:1",       "-TST=1:1",      "-ANSI-C=YES", "-PUSHPATH=YES",
        "-GENERATE=3",    "-ENTRY=*",       "-MEMORY=NO",    "-ALTTAB=NO",  "-ENCF=01234567",
        "-DECF=01234567", "-ASKF=01234567", "-PRIF=01234567"};
    first.words.push_back(treesOption(places.entryTrees));
    second.words.insert(second.words.end(), std::begin(needed), std::end(needed));
    second.words.push_back(treesOption(places.trees));
    for (Command *command : {&first, &second})
        command->words.insert(command->words.end(), options.files.begin(), options.files.end());
    return runStep(options, places, first, false) && runStep(options, places, second, true);
}

/* velmo's command line for the trees of a directory. */
std::vector<std::string> velmoWords(const Places &places, const fs::path &directory) {
    std::vector<std::string> words = {(places.programs / "velmo").string(), treesOption(directory),
                                      "-PREFIXLEN=32", "-VERBOSE=QUIET"};
    std::vector<std::string> prefixes;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory))
        if (entry.path().extension() == ".stx")
            prefixes.push_back(entry.path().stem().string());
    std::sort(prefixes.begin(), prefixes.end());
    words.insert(words.end(), prefixes.begin(), prefixes.end());
    return words;
}

/* Trees are loaded in processes of their own, since the tree store serves one set of trees. */
bool describeTypes(const Places &places) {
    const auto writeEntries = [&] {
        std::string text;
        for (const std::string &name : entriesOf(velmoWords(places, places.entryTrees)))
            text += name + "\n";
        return writeFile(places.list, text) ? 0 : 1;
    };
    const auto writeProgram = [&] {
        EntryNames listed;
        std::ifstream names(places.list);
        for (std::string name; std::getline(names, name);)
            listed.insert(name);
        const Description description = describe(velmoWords(places, places.trees), listed);
        if (description.modules.empty())
            return complain("there are no types in these modules") ? 0 : 1;
        return writeFile(places.sources / "program.c", programText(description)) ? 0 : 1;
    };
    return runApart(writeEntries) == 0 && runApart(writeProgram) == 0;
}

/* --- the C compiler --- */

void addWords(std::vector<std::string> &words, const char *text) {
    std::istringstream stream(text == nullptr ? "" : text);
    for (std::string word; stream >> word;)
        words.push_back(word);
}

std::vector<std::string> compilerWords(const Options &options, const Places &places) {
    std::vector<std::string> words;
    addWords(words, options.compiler.c_str());
    for (const char *word : {"-std=c99", "-O1", "-w"})
        words.emplace_back(word);
    /* Identifiers below 2.25 are UUIDs; who looks at messages meets them. */
    if (sizeof(void *) == 8)
        words.emplace_back("-DASN_ARC_BITS=128");
    addWords(words, std::getenv("CFLAGS"));
    words.push_back("-I" + places.sources.string());
    words.push_back("-I" + places.layer.string());
    return words;
}

std::vector<fs::path> sourcesIn(const fs::path &directory) {
    std::vector<fs::path> sources;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory))
        if (entry.path().extension() == ".c")
            sources.push_back(entry.path());
    std::sort(sources.begin(), sources.end());
    return sources;
}

bool compileProgram(const Options &options, const Places &places) {
    std::vector<fs::path> sources = sourcesIn(places.sources);
    for (const fs::path &source : sourcesIn(places.layer))
        sources.push_back(source);
    std::vector<Command> commands;
    const std::vector<std::string> words = compilerWords(options, places);
    Command link{words, {}, {}, {}};
    for (const fs::path &source : sources) {
        Command command{words, {}, {}, {}};
        const std::string object = (places.work / (source.filename().string() + ".o")).string();
        for (const std::string &word :
             {std::string("-c"), source.string(), std::string("-o"), object})
            command.words.push_back(word);
        commands.push_back(std::move(command));
        link.words.push_back(object);
    }
    const std::size_t failed = runAll(commands);
    if (failed < commands.size())
        return complain("the C compiler failed at " + sources[failed].filename().string());
    link.words.insert(link.words.end(), {"-lm", "-o", fs::absolute(options.output).string()});
    return run(link) == 0 || complain("the program could not be linked");
}

bool makeProgram(const Options &options, const Places &places) {
    if (!makeTrees(options, places))
        return false;
    Command velmo{velmoWords(places, places.trees), places.sources.string(), {}, {}};
    if (!runStep(options, places, velmo, true) || !describeTypes(places) ||
        !compileProgram(options, places))
        return false;
    std::printf("%s is made; %s --help tells what it does\n", options.output.c_str(),
                options.output.find('/') == std::string::npos ? ("./" + options.output).c_str()
                                                              : options.output.c_str());
    return true;
}

/* The status, if all that was said on the standard output got there. */
ExitStatus finished(ExitStatus status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    std::fputs("velmo-tool: the standard output can't be written\n", stderr);
    return STATUS_ERRORS;
}

/* No library says in all places that there is no more memory: some would end the process by force.
 */
void endWithoutMemory() {
    std::fputs("velmo-tool: not enough memory\n", stderr);
    std::fflush(nullptr);
    _exit(STATUS_ERRORS);
}

} // namespace

int main(int argc, char **argv) {
    std::set_new_handler(endWithoutMemory);
    Options options;
    if (!parseCommandLine(argc, argv, options))
        return STATUS_USAGE;
    if (options.help || options.version) {
        std::fputs(options.help ? usageText() : versionText().c_str(), stdout);
        return finished(STATUS_GOOD);
    }
    /* Who interrupts the run ends the commands; files still have to be removed. So they are however
       the work, which is done by a process of its own, comes to its end. */
    std::signal(SIGINT, SIG_IGN);
    Places places;
    if (!findPlaces(places) || !makeWorkplace(places, options))
        return STATUS_ERRORS;
    const int status = runApart(
        [&] { return makeProgram(options, places) ? finished(STATUS_GOOD) : STATUS_ERRORS; });
    std::error_code ignored;
    if (places.passing)
        fs::remove_all(places.work, ignored);
    if (status == KILLED)
        std::fputs("velmo-tool: a signal ended the run\n", stderr);
    return status == STATUS_GOOD ? STATUS_GOOD : STATUS_ERRORS;
}
