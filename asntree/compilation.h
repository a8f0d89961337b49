#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "asntree/diagnostics.h"
#include "asntree/parser.h"
#include "asntree/syntax.h"

/* What all parts of the compiler behind the parser share: the modules of a run, and the uses of
   syntax in them.

   Nothing is copied to instantiate a parameterized definition. A piece of syntax means something
   together with a scope: the module whose names it sees, and the arguments that stand for its dummy
   references. A pair of both is a *use* (TypeUse, ValueUse ...); all questions are asked of uses. */

namespace asntree {

struct Settings; /* options.h */
struct Scope;
struct ModuleInfo;
struct Datum;      /* values.h */
struct ValueMemos; /* reading.h */
struct ObjectInfo; /* objects.h */
struct ObjectSetInfo;

/* A use is empty if its pointer is null: what it should have led to was reported. */
struct TypeUse {
    const Type *type = nullptr;
    const Scope *scope = nullptr;
    explicit operator bool() const { return type != nullptr; }
    bool operator==(const TypeUse &) const = default;
};
struct ValueUse {
    const Value *value = nullptr;
    const Scope *scope = nullptr;
    explicit operator bool() const { return value != nullptr; }
    bool operator==(const ValueUse &) const = default;
};
struct SetUse {
    const ConstraintSpec *set = nullptr;
    const Scope *scope = nullptr;
    explicit operator bool() const { return set != nullptr; }
    bool operator==(const SetUse &) const = default;
};
struct ClassUse {
    const ObjectClass *objectClass = nullptr;
    const Scope *scope = nullptr;
    const Assignment *definition = nullptr; /* that says CLASS, behind all aliases */
    explicit operator bool() const { return objectClass != nullptr; }
    bool operator==(const ClassUse &) const = default;
};

/* What stands for a dummy reference. Which members count says `kind`. */
enum class ArgumentKind : std::uint8_t { Bad, Type, Class, Value, Object, ValueSet, ObjectSet };
struct Argument {
    ArgumentKind kind = ArgumentKind::Bad;
    Type *type = nullptr;           /* Type, Class */
    Value *value = nullptr;         /* Value, Object */
    ConstraintSpec *set = nullptr;  /* ValueSet, ObjectSet */
    const Scope *scope = nullptr;   /* in which the argument is to be read: that of the use */
    TypeUse governor;               /* of a value, set or object */
    Place place;
    std::string key; /* equal for arguments that mean the same by their text */
};

/* Where names are looked up: first the arguments of the definition, then the module. */
struct Scope {
    ModuleInfo *module = nullptr;
    const Assignment *definition = nullptr; /* null: the module itself */
    std::vector<Argument> arguments;        /* parallel to definition->parameters */
    std::string key;                        /* of all arguments; empty for a module */
    int depth = 0;                          /* instantiations within one another */
};

struct ImportedName {
    ModuleInfo *module = nullptr;         /* null: not found, was reported */
    const Name *symbol = nullptr;         /* where it is imported */
    bool ambiguous = false;               /* imported from two modules that mean different things */
    const Name *other = nullptr;          /* then the second place */
};

/* A module with its names. */
struct ModuleInfo {
    Module *syntax = nullptr;
    Scope root;
    std::uint32_t number = 0; /* in the compilation's list */
    bool predefined = false;  /* the module of TYPE-IDENTIFIER and its like, which has no file */
    bool incomplete = false;  /* has mistakes of syntax: what seems to be missing may be there */
    std::unordered_map<std::string_view, Assignment *> names;
    std::unordered_map<std::string_view, ImportedName> imported;
    std::vector<ModuleInfo *> imports; /* parallel to syntax->imports; null if missing */
    std::unordered_set<std::string_view> exported; /* of an EXPORTS list */
    std::vector<std::string> identifier; /* arcs in decimal; empty if there are none */
};

/* The key of what is known of a piece of syntax in a scope. */
struct UseKey {
    const void *syntax = nullptr;
    const Scope *scope = nullptr;
    bool operator==(const UseKey &) const = default;
};
struct UseHash {
    std::size_t operator()(const UseKey &key) const {
        return std::hash<const void *>()(key.syntax) * 31 + std::hash<const void *>()(key.scope);
    }
};

struct Instance { /* key of the instances: a parameterized definition with arguments */
    const Assignment *definition;
    std::string key;
    bool operator==(const Instance &) const = default;
};
struct InstanceHash {
    std::size_t operator()(const Instance &i) const {
        return std::hash<std::string>()(i.key) ^ std::hash<const void *>()(i.definition);
    }
};

struct Compilation {
    Sources sources;
    Diagnostics diagnostics{sources};
    Arena arena;
    std::vector<std::unique_ptr<ModuleInfo>> modules; /* the predefined one first; linkImports()
                                                         orders the others by standsBefore() */
    std::unordered_map<const Module *, ModuleInfo *> moduleInfos;
    std::unordered_map<Instance, std::unique_ptr<Scope>, InstanceHash> instances;
    std::deque<const Scope *> uncheckedInstances;
    std::size_t instanceCost = 0;
    std::size_t instanceCostAllowed = 0; /* 0: not worked out yet */
    std::unordered_map<std::string_view, std::vector<ModuleInfo *>> modulesByName;
    std::unordered_map<std::string, std::vector<ModuleInfo *>> modulesByIdentifier;
    /* What was worked out once, by what it was worked out from. */
    std::unordered_map<UseKey, TypeUse, UseHash> bases; /* beside those that types keep */
    std::unordered_map<UseKey, ObjectInfo *, UseHash> objectsOfValues;
    std::unordered_map<UseKey, ObjectSetInfo *, UseHash> objectSetsOfSets;
    std::unordered_map<const Assignment *, ConstraintSpec *> setsOfDefinitions;
    std::unordered_map<UseKey, Type *, UseHash> madeTypes; /* of value sets, tagged alternatives */
    std::unordered_map<std::string_view, Argument> builtinsByName; /* IMPORTS UTF8String */
    std::unordered_set<UseKey, UseHash> checkedUses; /* objects and sets that were checked */
    int depth = 0; /* of questions within one another, see DepthGuard */
    std::shared_ptr<ValueMemos> valueMemos; /* made when the first value is read */
    std::deque<Datum> datums;
    std::deque<ObjectInfo> objects;
    std::deque<ObjectSetInfo> objectSets;

    ParseContext parsing() { return {sources, diagnostics, arena}; }
    Compilation();
    ~Compilation();
    Compilation(const Compilation &) = delete;
    Compilation &operator=(const Compilation &) = delete;
};

/* Bounds questions that lead to questions, whatever circles a module holds. `ok` is false beyond the
   bound; the question is then answered by nothing, after a message of the caller's. */
struct DepthGuard {
    static constexpr int MAX_DEPTH = 400;
    Compilation &c;
    bool ok;
    explicit DepthGuard(Compilation &compilation) : c(compilation), ok(++c.depth <= MAX_DEPTH) {}
    ~DepthGuard() { --c.depth; }
    DepthGuard(const DepthGuard &) = delete;
    DepthGuard &operator=(const DepthGuard &) = delete;
};

inline ModuleInfo *moduleOf(Compilation &c, const Assignment *assignment) {
    return c.moduleInfos.at(assignment->module);
}

/* The source file that a module stands in. */
inline SourceFile &fileOf(Compilation &c, const ModuleInfo &module) {
    return c.sources[module.syntax->file];
}

} // namespace asntree
