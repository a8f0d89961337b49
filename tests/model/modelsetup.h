#pragma once

#include <gtest/gtest.h>

#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/valuequeries.h"
#include "options/catalogue.h"
#include "options/ketracnf.h"
#include "store/tree.h"
#include "tests/support/loadtree.h"

const auto exitsWith2 = testing::ExitedWithCode(2);

/* Loaded trees as a generator sees them: handles on a module and on its definitions by name. */
class ModelSetup {
public:
    ModelSetup() {
        treeHooks.newOptions = std::make_shared<GlobalOptions>;
            treeHooks.settleStoredOptions = settleStoredOptions;
    }
    ModelSetup(const ModelSetup &) = delete;
    ModelSetup &operator=(const ModelSetup &) = delete;

    /* The module under work; imported trees are saved before. */
    void load(TreeWriter &tree) {
        module = getAsnModule(loadTree(dir, tree));
        cMP = module->modRec;
    }
    void import(TreeWriter &tree, const std::string &prefix) {
        ASSERT_TRUE(tree.save(dir.path(prefix + ".stx")));
    }

    /* A definition, or a component as "Type.component". */
    void withType(const std::string &name, Call<void(AsnType *type)> func) const {
        const std::size_t dot = name.find('.');
        bool found = false;
        forEachType(module, [&](AsnType *type, int) {
            if (found || getTypeRef(type) != name.substr(0, dot))
                return;
            if (dot == std::string::npos) {
                found = true;
                func(type);
                return;
            }
            forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
                if (getTypeCompRef(comp) == name.substr(dot + 1)) {
                    found = true;
                    func(comp);
                }
            });
        });
        EXPECT_TRUE(found) << name;
    }
    void withValue(const std::string &name, Call<void(AsnValue *value)> func) const {
        bool found = false;
        forEachValue(module, [&](AsnValue *value, int) {
            if (!found && getRefOf(value) == name) {
                found = true;
                func(value);
            }
        });
        EXPECT_TRUE(found) << name;
    }

    /* What `textOf` says of each definition. */
    using Rows = std::vector<std::pair<std::string, std::string>>;
    template <typename TextOf> void expectTypes(TextOf textOf, const Rows &rows) const {
        for (const auto &[name, expected] : rows)
            withType(name,
                     [&, &n = name, &e = expected](AsnType *t) { EXPECT_EQ(textOf(t), e) << n; });
    }
    template <typename TextOf> void expectValues(TextOf textOf, const Rows &rows) const {
        for (const auto &[name, expected] : rows)
            withValue(name,
                      [&, &n = name, &e = expected](AsnValue *v) { EXPECT_EQ(textOf(v), e) << n; });
    }

    WorkDir dir;
    AsnModule *module = nullptr;
};

/* A change to a finished tree, and a part of the message that the run must end with. */
struct Spoilt {
    void (*spoil)(TreeWriter &w);
    const char *message;
};
template <typename Run> void expectFatal(Run run, const std::vector<Spoilt> &rows) {
    for (const Spoilt &row : rows)
        EXPECT_EXIT(run(row.spoil), exitsWith2, row.message) << &row - rows.data();
}

inline std::string shown(sint64 number) {
    return i64ismax(number) ? "MAX" : i64ismin(number) ? "MIN" : i64tostr(number);
}

/* Constraints. */
inline RecNr one(TreeWriter &w, std::int64_t number) {
    return w.single(w.intValue(number));
}
inline RecNr openRange(TreeWriter &w, std::int64_t low, std::int64_t high) {
    const RecNr lower = w.intValue(low).nr;
    return w.rangeOf(lower, w.intValue(high).nr, 0);
}
