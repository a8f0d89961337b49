#include "asntree/emitter.h"

#include <algorithm>
#include <set>

/* Names of components and fields that C can't have twice in one structure. */

namespace asntree {

namespace {

/* What generated structures hold beside their components. */
constexpr std::string_view OWN_MEMBERS[] = {"compmask", "extensionmarker"};

/* The member that a component becomes; empty for COMPONENTS OF. */
std::string_view memberOf(TreeState &ts, RecNr nr) {
    const RecNr name = std::abs(ts.tree().t(nr).nameIdx);
    if (name == 0)
        return {};
    return std::string_view(ts.tree().strings8[static_cast<std::size_t>(name - 1)])
        .substr(0, ts.settings.nameLength);
}

bool haveClash(TreeState &ts, RecNr first) {
    std::vector<std::string_view> members(std::begin(OWN_MEMBERS), std::end(OWN_MEMBERS));
    for (RecNr nr = first; nr != 0; nr = ts.tree().t(nr).next)
        if (const std::string_view member = memberOf(ts, nr); !member.empty())
            members.push_back(member);
    std::sort(members.begin(), members.end());
    return std::adjacent_find(members.begin(), members.end()) != members.end();
}

} // namespace

void nameMembers(Emitter &e, TreeState &ts, RecNr first, std::string_view namingRow) {
    if (!haveClash(ts, first))
        return;
    std::set<std::string, std::less<>> used(std::begin(OWN_MEMBERS), std::end(OWN_MEMBERS));
    for (RecNr nr = first; nr != 0; nr = ts.tree().t(nr).next) {
        const std::string wanted(memberOf(ts, nr));
        if (wanted.empty() || used.insert(wanted).second)
            continue;
        std::string member;
        for (int i = 1; member.empty() || !used.insert(member).second; ++i) {
            const std::string tail = "_" + std::to_string(i);
            member = wanted.substr(0, ts.settings.nameLength - tail.size()) + tail;
        }
        ts.tree().t(nr).optionBits |= optionMask(OPT_NAMING);
        addTypeOption(ts, nr, TED_OPTION, "-" + std::string(namingRow) + "NAME=" + member);
        addNote(e, ts,
                "the member `" + wanted + "` is called `" + member +
                    "` in C: the structure has another one of that name");
    }
}

} // namespace asntree
