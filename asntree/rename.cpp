#include "asntree/rename.h"

#include <algorithm>
#include <set>

#include "asntree/cnames.h"
#include "base/text.h"

namespace asntree {

namespace {

/* Whether two trees may meet in one program, as -UNIQUE= says. */
struct Meetings {
    const Plan &plan;
    bool everywhere;
    std::vector<std::vector<std::uint32_t>> includers;          /* by tree */
    std::unordered_map<std::uint32_t, std::vector<bool>> above; /* all that lead to a tree */

    Meetings(const Plan &p, bool all) : plan(p), everywhere(all) {
        includers.resize(plan.trees.size());
        for (std::uint32_t tree = 0; tree < plan.trees.size(); ++tree)
            for (std::size_t other : plan.trees[tree].includes)
                includers[other].push_back(tree);
    }
};

const std::vector<bool> &treesAbove(Meetings &meetings, std::uint32_t tree) {
    auto [place, isNew] = meetings.above.emplace(tree, std::vector<bool>());
    if (!isNew)
        return place->second;
    std::vector<bool> &marks = place->second;
    marks.assign(meetings.plan.trees.size(), false);
    marks[tree] = true;
    std::vector<std::uint32_t> open{tree};
    while (!open.empty()) {
        const std::uint32_t at = open.back();
        open.pop_back();
        for (std::uint32_t next : meetings.includers[at])
            if (!marks[next]) {
                marks[next] = true;
                open.push_back(next);
            }
    }
    return marks;
}

/* Do the headers of both stand in those of one of them, or of a third tree? */
bool meet(Meetings &meetings, std::uint32_t a, std::uint32_t b) {
    if (meetings.everywhere || a == b)
        return true;
    const std::vector<bool> &aboveA = treesAbove(meetings, a);
    const std::vector<bool> &aboveB = treesAbove(meetings, b);
    for (std::size_t i = 0; i < aboveA.size(); ++i)
        if (aboveA[i] && aboveB[i])
            return true;
    return false;
}

/* Why a definition can't keep its name; a smaller rank goes first. */
enum class Rank : std::uint8_t { SameName, DerivedName, ReservedName, MemberName, None };

struct Clash {
    Rank rank = Rank::None;
    std::uint32_t other = 0; /* a definition, for the first two ranks */
};

struct Renamer {
    NameTable &table;
    Meetings meetings;
    std::vector<NameUse> uses;
    std::vector<Clash> clashes; /* by definition */

    std::uint32_t treeOf(const NameUse &use) const {
        return use.role == NameRole::Member ? use.owner : table.definitions[use.owner].tree;
    }
    void found(std::uint32_t owner, Clash clash) {
        if (clash.rank < clashes[owner].rank)
            clashes[owner] = clash;
    }
};

bool isFixed(NameRole role) {
    return role == NameRole::Member || role == NameRole::Reserved ||
           role == NameRole::ReservedMember;
}

/* What a use is to the definition whose name it has; None if they don't mind each other. */
Rank rankOf(Renamer &renamer, const NameUse &mine, const NameUse &other) {
    const bool isReserved =
        other.role == NameRole::Reserved ||
        (other.role == NameRole::ReservedMember && mine.role == NameRole::Define);
    if (isReserved)
        return Rank::ReservedName;
    if (other.role == NameRole::ReservedMember ||
        (other.role == NameRole::Member && mine.role != NameRole::Define))
        return Rank::None;
    if (!isFixed(other.role) && other.owner == mine.owner)
        return Rank::None;
    if (!meet(renamer.meetings, renamer.treeOf(mine), renamer.treeOf(other)))
        return Rank::None;
    if (other.role == NameRole::Member)
        return Rank::MemberName;
    /* Of a name and one that is derived, only the name is changed. */
    if (mine.role == NameRole::Derived && other.role != NameRole::Derived)
        return Rank::None;
    if (other.role == NameRole::Derived)
        return Rank::DerivedName;
    /* A name that was changed gives way to one that stands as it was written. */
    const std::vector<NamedDefinition> &all = renamer.table.definitions;
    return all[mine.owner].step == 0 && all[other.owner].step > 0 ? Rank::None : Rank::SameName;
}

/* Uses of one name. They are sorted by roles, so that the first clash is the one that counts. */
void compareUses(Renamer &renamer, const NameUse *begin, const NameUse *end) {
    if (isFixed(begin->role) || end - begin < 2)
        return;
    for (const NameUse *mine = begin; mine != end && !isFixed(mine->role); ++mine)
        for (const NameUse *other = begin; other != end; ++other) {
            const Rank rank = mine == other ? Rank::None : rankOf(renamer, *mine, *other);
            renamer.found(mine->owner, {rank, other->owner});
            if (rank != Rank::None)
                break;
        }
}

void findClashes(Renamer &renamer) {
    renamer.uses = allNames(renamer.table);
    renamer.clashes.assign(renamer.table.definitions.size(), {});
    const NameUse *at = renamer.uses.data();
    const NameUse *const end = at + renamer.uses.size();
    while (at != end) {
        const NameUse *next = at;
        while (next != end && next->hash == at->hash)
            ++next;
        compareUses(renamer, at, next);
        at = next;
    }
}

/* The prefix of the definition's module as the beginning of a name in C. */
std::string prefixOf(const Renamer &renamer, const NamedDefinition &definition) {
    const ModuleInfo *module = renamer.table.c.moduleInfos.at(definition.assignment->module);
    const std::string &prefix = renamer.table.plan.prefixes.at(module).gen;
    return isAsciiDigit(prefix.front()) ? "_" + prefix : prefix;
}

/* What stands in front of a name that is changed: all module prefixes may begin with what the user
   puts in front of all names, and once is enough then. */
std::string newPrefixOf(const Renamer &renamer, const NamedDefinition &definition) {
    const std::string &prefix = prefixOf(renamer, definition);
    const bool isInIt =
        prefix.size() > definition.given.size() && prefix.starts_with(definition.given);
    return isInIt ? prefix : prefix + definition.given;
}

std::string quoted(std::string_view name) {
    return "`" + std::string(name) + "`";
}

std::string reasonOf(const Renamer &renamer, const NamedDefinition &definition,
                     const Clash &clash) {
    if (clash.rank == Rank::MemberName)
        return "a component or field has that name, and a define would change it";
    if (clash.rank == Rank::ReservedName)
        return "C or the run-time layer has that name";
    const NamedDefinition &other = renamer.table.definitions[clash.other];
    std::string text = quoted(other.assignment->name.text);
    if (other.assignment->module != definition.assignment->module)
        text += " of module " + quoted(other.assignment->module->name.text);
    return text + (clash.rank == Rank::DerivedName ? " leads to the same name in C"
                                                   : " would have the same name in C");
}

/* A name that nothing has yet, with a number at its end. */
void giveNumber(Renamer &renamer, NamedDefinition &definition, std::set<std::uint64_t> &newNames) {
    const std::string_view written = definition.assignment->name.text;
    const std::string base =
        definition.naming.name.empty() ? std::string(written) : definition.naming.name;
    const std::size_t length = renamer.table.given.nameLengths[definition.tree];
    for (int number = 1;; ++number) {
        const std::string tail = "_" + std::to_string(number);
        definition.naming.name = base.substr(0, length - tail.size()) + tail;
        const std::uint64_t hash = hashOf(nameInC(renamer.table, definition));
        auto place = std::lower_bound(
            renamer.uses.begin(), renamer.uses.end(), hash,
            [](const NameUse &use, std::uint64_t wanted) { return use.hash < wanted; });
        if ((place == renamer.uses.end() || place->hash != hash) && newNames.insert(hash).second)
            return;
    }
}

/* True if the prefixes of two clashing definitions tell them apart. */
bool prefixHelps(const Renamer &renamer, const NamedDefinition &definition, const Clash &clash) {
    if (definition.step > 0)
        return false;
    return clash.rank != Rank::SameName ||
           prefixOf(renamer, definition) !=
               prefixOf(renamer, renamer.table.definitions[clash.other]);
}

/* Changes the names of the clashes of the smallest rank; false if there are none. */
bool renameOnce(Renamer &renamer) {
    findClashes(renamer);
    Rank rank = Rank::None;
    for (const Clash &clash : renamer.clashes)
        rank = std::min(rank, clash.rank);
    if (rank == Rank::None)
        return false;
    std::set<std::uint64_t> newNames;
    std::vector<bool> helps(renamer.clashes.size());
    for (std::size_t n = 0; n < renamer.clashes.size(); ++n)
        helps[n] = prefixHelps(renamer, renamer.table.definitions[n], renamer.clashes[n]);
    for (std::size_t n = 0; n < renamer.clashes.size(); ++n) {
        if (renamer.clashes[n].rank != rank)
            continue;
        NamedDefinition &definition = renamer.table.definitions[n];
        if (definition.reason.empty())
            definition.reason = reasonOf(renamer, definition, renamer.clashes[n]);
        if (helps[n]) {
            definition.step = 1;
            definition.naming.pref = newPrefixOf(renamer, definition);
        } else {
            definition.step = 2;
            giveNumber(renamer, definition, newNames);
        }
    }
    return true;
}

void storeOverrides(Compilation &c, const NameTable &table, Plan &plan) {
    for (const NamedDefinition &definition : table.definitions) {
        if (definition.step == 0)
            continue;
        const std::string word = "-" + std::string(namingPrefix(definition.kind));
        std::vector<std::string> &texts = plan.overrides[definition.assignment];
        if (definition.naming.pref != definition.given)
            texts.push_back(word + "PREF=" + definition.naming.pref);
        if (definition.step == 2)
            texts.push_back(word + "NAME=" + definition.naming.name);
        const std::string text = quoted(definition.assignment->name.text) + " is called " +
                                 quoted(nameInC(table, definition)) + " in C: " + definition.reason;
        plan.trees[definition.tree].notes.push_back(text);
        note(c.diagnostics, definition.assignment->name.place, text);
    }
}

} // namespace

void renameClashes(Compilation &c, const Settings &settings, const GivenNames &given, Plan &plan) {
    if (settings.unique == UniqueNames::No)
        return;
    constexpr int MAX_ROUNDS = 20; /* each changes names; a few are the rule */
    NameTable table{c, plan, given, {}, {}};
    fillTable(table);
    Renamer renamer{table, Meetings(plan, settings.unique == UniqueNames::Run), {}, {}};
    for (int round = 0; round < MAX_ROUNDS && renameOnce(renamer); ++round) {
    }
    storeOverrides(c, table, plan);
}

} // namespace asntree
