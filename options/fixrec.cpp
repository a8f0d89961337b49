#include "options/naming.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/fatal.h"
#include "options/checkers.h"
#include "options/ketracnf.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

bool isEmpty(const char *text) {
    return text == nullptr || *text == '\0';
}

bool isValueKind(int kind) {
    return kind == KIND_VALUE || kind == KIND_OBJECT || kind == KIND_NAMED_NUMBER;
}

const NameOptPref &rowOfKind(int kind) {
    const NameOptPref *row = nameOptPref;
    while (row->prefix != nullptr && row->kind != kind)
        ++row;
    if (row->prefix == nullptr)
        fatalError(FATAL_INTERNAL, "getFixRec: unknown kind of name");
    return *row;
}

/* Name number of the current record of a kind, and the options that are written on it. */
RecNr getTedRecAndCompIdByKind(int kind, TedRange *range) {
    if (isValueKind(kind)) {
        if ((vNode.valueFlags & VALUE_NAMING) != 0)
            *range = {vNode.tedFirst, vNode.tedLast};
        return vNode.nameIdx;
    }
    if ((tNode.optionBits & optionMask(OPT_NAMING)) != 0)
        *range = {tNode.tedFirst, tNode.tedLast};
    return tNode.nameIdx;
}

void replaceGiven(FixRec *dst, const FixRec &by) {
    if (by.conv != nullptr)
        dst->conv = by.conv;
    if (by.pref != nullptr)
        dst->pref = by.pref;
    if (by.name != nullptr)
        dst->name = by.name;
    if (by.suff != nullptr)
        dst->suff = by.suff;
}

/* One option that is written on the definition; `text` is what stands behind its first character.
 */
void applyOverride(FixRec *dst, const char *text, const NameOptPref &row) {
    const char *word = isOptionStri(text, row.prefix);
    if (word == nullptr)
        return;
    for (const char *name : {"CONV=", "PREF=", "NAME=", "SUFF="})
        if (const char *value = isOptionStri(word, name))
            updateNamingOption(dst, word, value);
}

void applyOverrides(FixRec *dst, ModRec *module, const TedRange &range, int kind) {
    if (range.first == 0)
        return;
    const NameOptPref &row = rowOfKind(kind);
    for (RecNr nr = range.first; nr <= range.last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_OPTION)
            continue;
        const char *text = optionalStri(module, tedRec.tedText);
        if (*text != '\0')
            applyOverride(dst, text + 1, row);
    }
}

/* Letter-case conversion of a name that is put together of several parts. */
struct NameConverter {
    bool hyphenate = false;
    bool lower = false;
    bool upper = false;
    char previous = '\0'; /* last character read, over all parts */
};

NameConverter parseConversion(const char *conv) {
    NameConverter converter;
    if (*conv == 'H' || *conv == 'h') {
        converter.hyphenate = true;
        ++conv;
    }
    converter.lower = *conv == 'L' || *conv == 'l';
    converter.upper = *conv == 'U' || *conv == 'u';
    return converter;
}

void appendConverted(Text &dst, std::string_view part, NameConverter *converter) {
    constexpr char CASE_DISTANCE = 'a' - 'A';
    for (char c : part) {
        const char previous = std::exchange(converter->previous, c);
        if (isAsciiUpper(c)) {
            if (converter->hyphenate && (isAsciiLower(previous) || isAsciiDigit(previous)))
                dst += '_';
            dst += converter->lower ? static_cast<char>(c + CASE_DISTANCE) : c;
        } else if (isAsciiLower(c)) {
            dst += converter->upper ? static_cast<char>(c - CASE_DISTANCE) : c;
        } else {
            dst += c == '-' ? '_' : c;
        }
    }
}

std::string_view cutTo(const char *text, std::int32_t length) {
    text = orEmpty(text);
    return {text, strnlen(text, static_cast<std::size_t>(std::max(length, 0)))};
}

} // namespace

void getFixRec(FixRec *dst, int kind) {
    ModRec *module = currModule(isValueKind(kind) ? REC_VNODE : REC_TNODE);
    TedRange range;
    const RecNr id = getTedRecAndCompIdByKind(kind, &range);
    *dst = FixRec();
    if (id == 0)
        return;
    const char *text = getStri(module, id);
    const FixChain *chain = fixRecForKind(module->options.get(), kind);

    dst->conv = dst->pref = dst->name = dst->suff = "";
    replaceGiven(dst, chain->head);
    if (const FixRec *record = findGlbFixRecByName(*chain, text))
        replaceGiven(dst, *record);
    const std::int32_t nameLen = module->options->nameLen;
    dst->id = text;
    dst->idLen = static_cast<std::int32_t>(strnlen(text, static_cast<std::size_t>(nameLen)));
    applyOverrides(dst, module, range, kind);

    if (isEmpty(dst->conv) && isEmpty(dst->pref) && isEmpty(dst->name) && isEmpty(dst->suff))
        return;
    if (isEmpty(dst->name))
        dst->name = dst->id;
    else
        dst->idLen = nameLen;
}

Text printFixRec(const FixRec &fix) {
    if (isEmpty(fix.name))
        return Text(cutTo(fix.id, fix.idLen));
    /* Without letters the converter changes nothing but hyphens. */
    NameConverter converter = parseConversion(orEmpty(fix.conv));
    Text name;
    appendConverted(name, orEmpty(fix.pref), &converter);
    appendConverted(name, cutTo(fix.name, fix.idLen), &converter);
    appendConverted(name, orEmpty(fix.suff), &converter);
    return name;
}
