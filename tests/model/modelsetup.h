#pragma once

#include <gtest/gtest.h>

#include "model/iterators.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/valuequeries.h"
#include "options/catalogue.h"
#include "options/ketracnf.h"
#include "store/tree.h"
#include "tests/support/loadtree.h"

/* Loaded trees as a generator sees them: handles on a module and on its definitions by name. */
class ModelSetup {
public:
    ModelSetup() {
        treeHooks.newOptions = newGlobalOptions;
        treeHooks.deleteOptions = deleteGlobalOptions;
        treeHooks.settleStoredOptions = settleStoredOptions;
    }
    ~ModelSetup() { delAsnModule(module); }
    ModelSetup(const ModelSetup &) = delete;
    ModelSetup &operator=(const ModelSetup &) = delete;

    /* The module under work; imported trees are saved before. */
    void load(TreeWriter &tree) {
        module = newAsnModule(loadTree(dir, tree));
        cMP = module->modRec;
    }
    void import(TreeWriter &tree, const std::string &prefix) {
        ASSERT_TRUE(tree.save(dir.path(prefix + ".stx")));
    }

    void withType(const std::string &name, Call<void(AsnType *type)> func) const {
        bool found = false;
        forEachType(module, [&](AsnType *type, int) {
            Text text;
            if (!found && getTypeRef(text, nullptr, type, nullptr) == name) {
                found = true;
                func(type);
            }
        });
        EXPECT_TRUE(found) << name;
    }
    void withComp(const std::string &typeName, const std::string &name,
                  Call<void(AsnType *comp)> func) const {
        bool found = false;
        withType(typeName, [&](AsnType *type) {
            forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
                Text text;
                if (getTypeCompRef(text, nullptr, comp, nullptr) == name) {
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
            Text text;
            if (!found && getValueRef(text, nullptr, value, nullptr) == name) {
                found = true;
                func(value);
            }
        });
        EXPECT_TRUE(found) << name;
    }

    WorkDir dir;
    AsnModule *module = nullptr;
};

inline std::string shown(sint64 number) {
    return i64ismax(number) ? "MAX" : i64ismin(number) ? "MIN" : i64tostr(number);
}
