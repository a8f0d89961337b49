#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

#include "browse/page.h"
#include "browse/project.h"

/* velmo-browse: a page to go through what velmo made of a project's modules. */

namespace {

using namespace browse;
namespace fs = std::filesystem;

/* As velmo's: an error after which the work could be finished is 1, too. */
enum ExitStatus { STATUS_GOOD = 0, STATUS_USAGE = 1, STATUS_INCOMPLETE = 1, STATUS_FATAL = 2 };

struct Options {
    std::string tree;
    std::string output;
    std::string root; /* where velmo ran; empty: not said */
    bool help = false;
    bool version = false;
};

constexpr const char *USAGE = R"(Usage:

  velmo-browse [options] TREE

Writes a page of the project whose browser tree velmo has written, "p.acd" of -TAVI-PREFIX=p: its modules
and definitions, their ASN.1 text beside the C that was generated, and the warnings of "p.acs". The page is
one file that any browser shows.

  --output=FILE           the page (TREE, with ".html" for its suffix); "-" for the standard output
  --root=DIR              the directory that velmo ran in (that of TREE, then the current one)
  --help, --version
)";

bool complain(const std::string &text) {
    std::fprintf(stderr, "velmo-browse: %s\n", text.c_str());
    return false;
}

bool takeOption(std::string_view text, Options &options) {
    const struct {
        std::string_view name;
        std::string *value;
    } values[] = {{"--output=", &options.output}, {"--root=", &options.root}};
    for (const auto &option : values)
        if (text.starts_with(option.name) && text.size() > option.name.size()) {
            *option.value = text.substr(option.name.size());
            return true;
        }
    bool *const flag = text == "--help"      ? &options.help
                       : text == "--version" ? &options.version
                                             : nullptr;
    if (flag == nullptr)
        return complain("unknown option: " + std::string(text) +
                        "; velmo-browse --help tells more");
    *flag = true;
    return true;
}

bool parseCommandLine(int argc, char **argv, Options &options) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view text = argv[i];
        if (text.starts_with('-')) {
            if (!takeOption(text, options))
                return false;
        } else if (text.empty() || !options.tree.empty()) {
            return complain(text.empty() ? "an empty argument"
                                         : "a page has one browser tree: " + std::string(text));
        } else {
            options.tree = text;
        }
    }
    if (options.tree.empty() && !options.help && !options.version)
        return complain("no browser tree is named; velmo-browse --help tells more");
    if (options.output.empty() && !options.tree.empty())
        options.output = fs::path(options.tree).replace_extension(".html").string();
    std::error_code none;
    if (!options.tree.empty() && fs::equivalent(options.tree, options.output, none))
        return complain("the page would take the place of the tree: " + options.output);
    return true;
}

/* The whole file, if it is one; otherwise false, and why not. */
bool readFile(const fs::path &path, std::string &text, std::string &error) {
    std::error_code none;
    if (fs::exists(path, none) && !fs::is_regular_file(path, none)) {
        error = "Not a file";
        return false;
    }
    std::FILE *const file = std::fopen(path.c_str(), "rb");
    bool good = file != nullptr;
    if (good) {
        char part[1 << 16];
        while (const std::size_t size = std::fread(part, 1, sizeof part, file))
            text.append(part, size);
        good = std::ferror(file) == 0;
    }
    if (!good)
        error = std::strerror(errno);
    if (file != nullptr)
        std::fclose(file);
    return good;
}

/* The tree names files as they are called where velmo ran. */
fs::path findFile(const Options &options, const std::string &name) {
    if (!options.root.empty())
        return fs::path(options.root) / name;
    std::error_code none;
    const fs::path beside = fs::path(options.tree).parent_path() / name;
    return fs::exists(beside, none) ? beside : fs::path(name);
}

bool readProject(const Options &options, Project &project) {
    std::string text, error;
    if (!readFile(options.tree, text, error))
        return complain("can't read the browser tree " + options.tree + ": " + error);
    if (!readTree(text, project, error))
        return complain(options.tree + ":" + error);
    text.clear();
    const fs::path summary = fs::path(options.tree).parent_path() / (project.name + ".acs");
    std::error_code none;
    if (fs::exists(summary, none) && !readFile(summary, text, error))
        return complain("can't read the summary " + summary.string() + ": " + error);
    readSummary(text, project);
    return true;
}

/* All files of the project. One that can't be read is told of, here and in the page. */
std::vector<SourceText> readTexts(const Options &options, const Project &project, bool &complete) {
    std::vector<SourceText> texts(project.files.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (!readFile(findFile(options, project.files[i]), texts[i].text, texts[i].error))
            complete = complain("warning: can't read " + project.files[i] + ": " + texts[i].error);
    return texts;
}

bool writeOutput(const Options &options, const Project &project,
                 const std::vector<SourceText> &texts) {
    const bool toStandard = options.output == "-";
    std::FILE *const out = toStandard ? stdout : std::fopen(options.output.c_str(), "wb");
    if (out == nullptr)
        return complain("can't write " + options.output + ": " + std::strerror(errno));
    writePage(project, texts, out);
    const bool written = std::fflush(out) == 0 && std::ferror(out) == 0;
    if ((!toStandard && std::fclose(out) != 0) || !written)
        return complain("can't write " + options.output + ": " + std::strerror(errno));
    return true;
}

} // namespace

int main(int argc, char **argv) {
    std::set_new_handler([] {
        std::fputs("velmo-browse: out of memory\n", stderr);
        std::_Exit(STATUS_FATAL);
    });
    Options options;
    if (!parseCommandLine(argc, argv, options))
        return STATUS_USAGE;
    if (options.help || options.version) {
        std::fputs(options.help ? USAGE : "velmo-browse " VELMO_VERSION "\n", stdout);
        if (std::fflush(stdout) != 0)
            complain("the standard output can't be written");
        return std::ferror(stdout) == 0 ? STATUS_GOOD : STATUS_FATAL;
    }
    Project project;
    if (!readProject(options, project))
        return STATUS_FATAL;
    bool complete = true;
    const std::vector<SourceText> texts = readTexts(options, project, complete);
    if (!writeOutput(options, project, texts))
        return STATUS_FATAL;
    return complete ? STATUS_GOOD : STATUS_INCOMPLETE;
}
