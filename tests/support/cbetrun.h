#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cbet/typefuncinfo.h"
#include "model/backend.h"
#include "options/ketracnf.h"
#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Runs the C back-end tools over a tree in this process, into two files: one for function bodies
   and one for prototypes. */
inline constexpr int BODY_FILE = 1;
inline constexpr int PROTO_FILE = 2;

class CbetRun {
public:
    /* Loads the tree as a run does, with what it imports; once in a process. */
    explicit CbetRun(TreeWriter &tree, const std::vector<TreeWriter *> &imported = {});
    /* The module's, to change between passes. */
    GlobalOptions &options();

    /* What was written since the last call, without the indentation. */
    std::string body() { return taken(BODY_FILE); }
    std::string protos() { return taken(PROTO_FILE); }

    /* Calls func for a definition, or for a component (or the element, by the name "") of one,
       whose name then stands on the path. */
    void forType(const std::string &name, const std::function<void(AsnType *)> &func);
    void forComp(const std::string &typeName, const std::string &compName,
                 const std::function<void(AsnType *)> &func);

    /* One pass: the functions of all types, by a generator that notes what it is asked for: "leaf
       home->x;", "frame ...;", "skip ...;", "ignore ...;"; presence tests read "is x". */
    void generate(FuncKind kind) { generate(notingInfo(kind)); }
    void generate(const TypeFuncInfo &info);
    static TypeFuncInfo notingInfo(FuncKind kind);

    WorkDir dir;

private:
    std::string taken(int slot);
    std::size_t read_[PROTO_FILE + 1] = {};
};

/* The lines between the outer braces of a function, from a text of bodies; empty if it isn't there.
 */
std::string functionText(const std::string &bodies, const std::string &name);
/* The names of the functions in a text of prototypes, in their order. */
std::vector<std::string> functionNames(const std::string &protos);
