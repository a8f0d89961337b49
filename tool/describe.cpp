#include "tool/describe.h"

#include <algorithm>
#include <map>

#include "cbet/cbet.h"
#include "driver/driver.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/tags.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "store/ketramac.h"

namespace tool {

namespace {

/* Types within one another that are described at once; deeper ones wait until the walk meets their
   definition. */
constexpr int MAX_NESTING = 200;

struct Describer {
    Description result;
    std::map<std::pair<const ModRec *, RecNr>, std::size_t> known; /* by the place of the content */
    int nesting = 0;
    std::size_t unfilled = 0;
};

std::string hyphenated(Text text) {
    std::replace(text.begin(), text.end(), '_', '-');
    return text;
}

std::int64_t int64Of(sint64 number) {
    return static_cast<std::int64_t>((std::uint64_t{static_cast<std::uint32_t>(number.hi)} << 32) |
                                     number.lo);
}

/* --- kinds --- */

/* Builtin types that trees hold as OCTET STRINGs under the tag that makes them what they are. */
const char *kindByTag(int number) {
    enum { INTEGER = 2, UTF8_STRING = 12, RELATIVE_OID = 13, TIME = 14, DATE = 31, LAST_IRI = 36 };
    if (number == INTEGER)
        return "TYP_INTEGER";
    if (number == RELATIVE_OID)
        return "ASNTOOL_RELATIVE_OID";
    if (number == UTF8_STRING || number == TIME || (number >= DATE && number <= LAST_IRI))
        return "ASNTOOL_UTF8";
    return nullptr;
}

std::string kindOf(AsnType *type) {
    const int mainType = getTypeMainType(type);
    if (mainType == TYP_OCTSTR)
        if (const char *kind = kindByTag(universalTagOfBase(type)))
            return kind;
    switch (mainType) {
    case TYP_FIELDLIST:
    case TYP_OPEN:
    case TYP_EMB_PDV:
    case TYP_CHASTR:
        return "TYP_OPEN";
    case TYP_INSTANCE_OF:
    case TYP_EXTERNAL_1990:
        return "TYP_EXTERNAL";
    default:
        break;
    }
    return getTypeMainTypeStri(type);
}

/* --- types --- */

Place describePlace(Describer &d, AsnType *type);

void addNames(Type &row, AsnType *type) {
    forEachNamedNumber(type, [&](AsnType *, AsnValue *value, int) {
        row.names.emplace_back(int64Of(int64Value(value)), hyphenated(getRefOf(value)));
    });
}

void fill(Describer &d, std::size_t number, AsnType *type) {
    d.result.types[number].filled = true;
    --d.unfilled;
    ++d.nesting;
    if (isNamedNumbers(type))
        addNames(d.result.types[number], type);
    const auto add = [&](AsnType *, AsnType *comp, int) {
        Place place = describePlace(d, comp);
        d.result.types[number].places.push_back(std::move(place));
    };
    if (isStructuredType(type) || isListType(type))
        forEachTypeCompOrElem(type, add);
    --d.nesting;
}

std::size_t describeType(Describer &d, AsnType *type) {
    const auto [place, isNew] =
        d.known.try_emplace({type->contentModule, type->contentRecord}, d.result.types.size());
    const std::size_t number = place->second;
    if (isNew) {
        Type row;
        if (type->base.compStatus == TCS_HEADER && type->baseId.id != nullptr)
            row.name = hyphenated(type->baseId.id);
        row.kind = kindOf(type);
        d.result.types.push_back(std::move(row));
        ++d.unfilled;
    }
    if (!d.result.types[number].filled && d.nesting < MAX_NESTING) {
        /* The definition of a name for another type shows no components. */
        if (isSynonymType(type))
            forSynonymType(type, [&](AsnType *base) { fill(d, number, base); });
        else
            fill(d, number, type);
    }
    return number;
}

bool hasBounds(int mainType) {
    return mainType == TYP_INTEGER || mainType == TYP_BITSTR || mainType == TYP_OCTSTR ||
           mainType == TYP_SEQOF || mainType == TYP_SETOF ||
           (isRestrCharStringKind(mainType) && mainType != TYP_OBJDESCR);
}

Place describePlace(Describer &d, AsnType *type) {
    Place place;
    place.status = getTypeCompStatus(type);
    if (isComponentType(type))
        place.name = hyphenated(getTypeCompRef(type));
    else if (!isElemType(type))
        place.name = hyphenated(getTypeRef(type));
    if (getTypeMainType(type) == TYP_EXTENSION_MARKER) {
        place.name.clear();
        return place;
    }
    forEachTag(type, [&](AsnType *, const AsnTag *tag, int) {
        place.tags.push_back((static_cast<std::uint32_t>(getTagClass(tag)) << 30) |
                             static_cast<std::uint32_t>(getTagNumber(tag)));
    });
    if (hasBounds(getTypeMainType(type))) {
        place.low = int64Of(type->lowerEndpoint);
        place.high = int64Of(type->upperEndpoint);
    }
    place.rules = rulesOf(type);
    place.type = describeType(d, type);
    return place;
}

/* --- modules --- */

void load(const std::vector<std::string> &velmoArguments) {
    static std::vector<std::string> kept;
    kept = velmoArguments;
    static std::vector<char *> arguments;
    for (std::string &argument : kept)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    installHooks();
    static const char *const noUsage[] = {nullptr};
    cInitCBET([&] {
        initBackend(static_cast<int>(kept.size()), arguments.data(), "VELMO", 0, 0, noUsage);
    });
}

Module describeModule(Describer &d, AsnModule *module, const EntryNames &listed) {
    Module row;
    row.name = hyphenated(getModuleRef(module));
    row.filePrefix = module->modRec->filePrefix;
    row.codingPrefix = getBEModMetaRec(module)->codFuncPref;
    forEachEntryType(module, [&](AsnType *type, int) {
        Entry entry;
        entry.functions = getMetaTypeId(type);
        entry.value = getMetaTypeName(type);
        entry.kind = getTypeMainTypeStri(type);
        entry.place = describePlace(d, type);
        entry.place.listed = listed.count(row.filePrefix + "." + entry.place.name) != 0;
        row.entries.push_back(std::move(entry));
    });
    return row;
}

} // namespace

EntryNames entriesOf(const std::vector<std::string> &velmoArguments) {
    EntryNames names;
    load(velmoArguments);
    forEachModule([&](AsnModule *module) {
        forEachEntryType(module, [&](AsnType *type, int) {
            names.insert(std::string(module->modRec->filePrefix) + "." +
                         hyphenated(getTypeRef(type)));
        });
    });
    return names;
}

Description describe(const std::vector<std::string> &velmoArguments, const EntryNames &listed) {
    Describer d;
    load(velmoArguments);
    forEachModule([&](AsnModule *module) {
        if (getNrOfEntryTypes(module) > 0)
            d.result.modules.push_back(describeModule(d, module, listed));
    });
    for (std::size_t before = SIZE_MAX; d.unfilled > 0 && d.unfilled < before;) {
        before = d.unfilled;
        forEachModule([&](AsnModule *module) {
            forEachType(module, [&](AsnType *type, int) { describePlace(d, type); });
        });
    }
    return std::move(d.result);
}

} // namespace tool
