#include "gen/fileset.h"

#include "base/files.h"
#include "base/toolinfo.h"
#include "model/modules.h"
#include "options/ketracnf.h"

namespace {

/* Characters of the module information on one line. */
constexpr std::size_t INFO_WIDTH = 60;

/* One comment around several lines: the same texts stand at both ends of each. */
struct CommentLines {
    int slot;
    const char *prefix;
    const char *suffix;

    /* In one piece, which the output layer doesn't break. */
    void add(const Text &line) const { putF(slot, prefix, line, suffix, "\n"); }
};

const char *nullIfEmpty(const char *text) {
    return text != nullptr && *text != '\0' ? text : nullptr;
}

/* "VELMO 1.07 on 22.11.2026 at 9:05.00", where the name is in the call that comes before. */
Text versionAndTime(int version, int patchLevel, const TimeStamp &stamp) {
    return printVersionStri(version, patchLevel) + " " + printTimeStamp(stamp);
}

/* One line, framed as the kind of file has its comments. */
void writeInfo(const CommentLines &lines, const Text &info) {
    Text intro = "INFO = ";
    for (std::size_t place = 0; place < info.size(); place += INFO_WIDTH) {
        lines.add(intro + info.substr(place, INFO_WIDTH));
        intro = "       ";
    }
}

} // namespace

void openF(int slot, AsnModule *module) {
    if (module != nullptr)
        openFWithPrefix(slot, module->modRec->filePrefix.c_str());
}

void printFileHeader(int slot, const char *start, const char *end, const char *linePrefix,
                     const char *lineSuffix, AsnModule *module) {
    if (slot == 0)
        return;
    const ModRec *modRec = module->modRec;
    CommentLines lines = {slot, nullIfEmpty(linePrefix), nullIfEmpty(lineSuffix)};
    putF(slot, nullIfEmpty(start));
    putF(slot, "\n");
    if (!backendName.empty())
        lines.add("Processed by " + backendName + " " +
                  versionAndTime(backendVersion, backendPatchLevel, timeStamp));
    lines.add("Syntax file processed by KETRA " +
              versionAndTime(modRec->stamp.treeVersion, -1, modRec->stamp));
    lines.add("ASN.1 module = " + modRec->moduleName);
    lines.add("FILE = " + modRec->filePrefix + fArr[slot].suffix);
    writeInfo(lines, getGlobalOptions(module)->info);
    putF(slot, nullIfEmpty(end));
    putF(slot, "\n");
}

/* 24.12.2026 at 12:30:00 */
Text printTimeStamp(const TimeStamp &stamp) {
    const int date = stamp.date;
    const int time = stamp.time;
    return formatText("on %02d.%02d.%d at %d:%02d.%02d", date % 100, date / 100 % 100, date / 10000,
                      time / 10000, time / 100 % 100, time % 100);
}
