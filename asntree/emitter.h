#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <unordered_set>

#include "asntree/constraints.h"
#include "asntree/emit.h"
#include "asntree/objects.h"
#include "asntree/references.h"
#include "asntree/values.h"
#include "asntree/words.h"

/* What the files that make trees share. All trees of a run are made together: the definitions of all
   get their numbers first, so that references to them need no second pass; numbers of what stands
   inside definitions (components, items) are filled in when all records are there, by name. */

namespace asntree {

/* The number of a TNode that may not be known yet: a node of a tree, the component of another
   place's type, or the element of its lists. A number in `TreeState::places`. */
using PlaceNr = std::uint32_t;
struct PendingPlace {
    enum Kind : std::uint8_t { Node, Component, Element } kind = Node;
    PlaceNr parent = 0;
    std::string_view name; /* of a component, with hyphens */
    std::uint32_t tree = 0; /* of a node */
    RecNr nr = 0;
};

/* The instantiation that a node stands in, and those around it. */
struct InstanceFrame {
    const InstanceFrame *outer = nullptr;
    const Scope *scope = nullptr;
    RecNr definition = 0; /* that is this instance (`U ::= T{X}`), 0 for one inside a type */
};

/* A TNode that has its number and its place in a list, and whose content is still to be made. */
struct Pending {
    RecNr nr = 0;
    TypeUse use;
    const InstanceFrame *frame = nullptr;
    const void *item = nullptr;      /* that words may speak of: Assignment, Component ... */
    std::optional<std::int64_t> tag; /* a context tag in front of all others */
    std::string_view namingRow;      /* "C" for a component, "F" for a field of a class */
};

struct ConstraintFixup {
    RecNr sub;
    PlaceNr component;
};
struct GovernorFixup {
    RecNr value;
    PlaceNr place;
};
struct ItemFixup {
    RecNr value; /* a reference to an item of the type at `place` */
    PlaceNr place;
    std::string_view name;
};

/* A tree while it is made. */
struct TreeState {
    std::uint32_t number = 0; /* in the plan */
    const TreePlan *plan = nullptr;
    EmittedTree *out = nullptr;
    ModuleSettings settings;
    std::unordered_map<std::uint32_t, std::int32_t> imports; /* tree of the plan -> module number */
    std::vector<std::int64_t> treesOfImports; /* by module number; -1: none of the plan */
    std::int32_t predefinedImport = 0;
    RecNr lastType = 0; /* ends of the definition lists */
    RecNr lastValue = 0;
    RecNr plainInteger = 0; /* hidden nodes that govern what has no type of its own */
    RecNr plainIdentifier = 0;
    std::deque<Pending> queue;
    std::deque<InstanceFrame> frames;
    std::unordered_map<const Scope *, RecNr> recursiveInstances; /* definitions made for them */
    std::unordered_map<const Scope *, RecNr> instanceClasses;
    std::unordered_map<const Assignment *, RecNr> predefinedClasses;
    std::vector<PendingPlace> places;
    std::map<std::pair<PlaceNr, std::string_view>, PlaceNr> placesByName;
    std::vector<ConstraintFixup> constraintFixups;
    std::vector<GovernorFixup> governorFixups;
    std::vector<ItemFixup> itemFixups;
    std::unordered_map<RecNr, std::pair<std::int64_t, std::int64_t>> includedBounds; /* by SubRec */
    std::unordered_map<RecNr, std::vector<TedRec>> typeOptions; /* by TNode, VNode */
    std::unordered_map<RecNr, std::vector<TedRec>> valueOptions;
    std::unordered_map<RecNr, const GivenWord *> arrayWords; /* of lists that words make arrays */
    std::unordered_set<std::string> usedNames; /* of definitions, filled when first needed */
    std::unordered_set<std::string_view> uncheckedNoted; /* kinds of constraints, told of once */
    std::size_t instances = 0;

    Tree &tree() { return out->tree; }
};

struct DefinitionPlace {
    std::uint32_t tree = 0;
    RecNr nr = 0;
};

struct Emitter {
    Compilation &c;
    const Plan &plan;
    const Settings &settings;
    const Directives *directives = nullptr;
    std::deque<TreeState> trees;
    std::unordered_map<const Assignment *, DefinitionPlace> types; /* classes and sets too */
    std::unordered_map<const Assignment *, DefinitionPlace> values;
    std::unordered_map<const ObjectClass *, DefinitionPlace> classFields; /* first field */
    std::unordered_set<const Assignment *> excluded; /* left out of all trees */
    std::unordered_set<const Type *> octetTypes;     /* INTEGER with the word int=octets */
    std::vector<const Assignment *> newlyExcluded;
    const Assignment *current = nullptr; /* the definition that is being made */
    std::unordered_map<const Type *, const Type *> bareMacros; /* made of plain references */
    const Type *operationType = nullptr; /* of macros; made when first asked for */
    bool failed = false;

    Emitter(Compilation &compilation, const Plan &p, const Settings &s)
        : c(compilation), plan(p), settings(s) {}
};

/* --- emit.cpp --- */

/* The definition being made is left out, with a warning. */
void leaveOut(Emitter &e, Place place, const std::string &what);
/* The definition being made can't be held by a tree, because of `what`: an error, unless such
   definitions are to be left out. */
void refuse(Emitter &e, Place place, const std::string &what);
/* A note on the definition being made, for the listing. */
void addNote(Emitter &e, TreeState &ts, std::string text);
/* "-" as "_". */
std::string treeName(std::string_view name);
RecNr nameNr(TreeState &ts, std::string_view name);
std::int32_t lineOf(Emitter &e, Place place);
const Words *wordsOf(Emitter &e, const void *item);

/* --- emitmodule.cpp: header, imports, options --- */

void emitHeader(Emitter &e, TreeState &ts);
void emitModuleIdentifier(Emitter &e, TreeState &ts);
/* The module number of another tree; an import is added if there is none. 1 for the tree itself. */
std::int32_t moduleNumber(Emitter &e, TreeState &ts, std::uint32_t tree);
std::int32_t predefinedModule(TreeState &ts);
/* Options of the module and its nodes, and the counts of the header. */
void layOutOptions(Emitter &e, TreeState &ts);
void countDefinitions(Emitter &e, TreeState &ts);

/* --- emitdefinitions.cpp --- */

/* Gives all definitions of a tree their numbers. */
void allocateDefinitions(Emitter &e, TreeState &ts);
void emitDefinitions(Emitter &e, TreeState &ts);
void addTypeOption(TreeState &ts, RecNr nr, int kind, std::string_view text);
/* The class, type or set definition appended to the list. */
void appendType(TreeState &ts, RecNr nr);

/* --- emitmacros.cpp --- */

/* Leaves out the instances of macros that nothing is known of. */
void leaveOutMacros(Emitter &e);
/* The use of a macro that a type is, with what follows it or without; empty if it is another type. */
TypeUse macroUse(Emitter &e, TypeUse use);
/* The type that an instance of a macro is as a type: `DisplayString ::= TEXTUAL-CONVENTION ...`;
   empty if it is none. */
TypeUse typeOfMacro(Emitter &e, TypeUse macro);
/* Defines the types that an instance names in its clauses, where they have no name of their own. */
void emitMacroTypes(Emitter &e, TreeState &ts, const Assignment &assignment);
/* The definitions whose INTEGERs are held as octets by a word. */
void findOctetTypes(Emitter &e);

/* --- emittypes.cpp --- */

RecNr newType(TreeState &ts, int status, RecNr parent, std::int32_t line);
/* A type that stands in no list: a governor, a type setting, a contained type. It is made at once
   if it is a plain reference, else when the queue is done. */
RecNr hiddenType(Emitter &e, TreeState &ts, TypeUse use, const InstanceFrame *frame,
                 int status = TCS_HEADER);
/* The node that governs values of a type: the definition that a plain reference names, else a hidden
   one. */
struct NodeReference {
    std::uint32_t tree = 0;
    RecNr nr = 0;
};
NodeReference governorNode(Emitter &e, TreeState &ts, TypeUse use);
RecNr plainInteger(TreeState &ts);
RecNr plainIdentifier(TreeState &ts);
void fillType(Emitter &e, TreeState &ts, const Pending &pending);
/* Fills what was put off. */
void runQueue(Emitter &e, TreeState &ts);
/* The layers of a type that become one record: dummy references, selections and fields of fixed
   type, from the outermost to the last, which is a reference to a definition, an instance, an open
   type or a builtin type. */
struct Layers {
    std::vector<TypeUse> uses;
    std::vector<bool> isDummy; /* parallel: a reference to a formal parameter */
    Target target; /* of a last layer that is a reference */
    TypeUse last() const { return uses.empty() ? TypeUse{} : uses.back(); }
};
Layers layersOf(Emitter &e, TypeUse use);
/* The record of layers that are known. */
void fillFromLayers(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers);
/* What words say of the node itself. */
void applyWords(Emitter &e, TreeState &ts, const Pending &pending);
/* Sets reference and module of a node that refers to a definition; false if that is left out. */
bool referTo(Emitter &e, TreeState &ts, RecNr nr, const Assignment *definition);
bool emittedAsOctets(Emitter &e, TypeUse base);
/* The kind that a builtin type has in trees. */
int mainTypeOf(Emitter &e, TypeUse base);

/* --- emittags.cpp --- */

void emitTags(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers);
/* The tag that stands for a type which the format has no number for; 0 if it has. */
int replacedTag(Emitter &e, TypeUse base);

/* --- emitstructures.cpp --- */

void emitStructure(Emitter &e, TreeState &ts, const Pending &pending, TypeUse structure);
void emitItems(Emitter &e, TreeState &ts, RecNr nr, TypeUse base);

/* --- emitmembers.cpp --- */

/* Gives the components or fields of one list names that are told apart in C. `namingRow` is the
   kind of naming option, "C" or "F". */
void nameMembers(Emitter &e, TreeState &ts, RecNr first, std::string_view namingRow);

/* --- emitinstances.cpp --- */

void emitInstance(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers);
/* A name of a definition that nothing in the tree has yet. */
std::string freeName(TreeState &ts, std::string_view wish);
void aliasForeignInstances(Emitter &e, TreeState &ts);

/* --- emitclasses.cpp --- */

void emitClassDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment);
/* Makes a node a synonym of a class. */
void referToClass(Emitter &e, TreeState &ts, RecNr nr, TypeUse use);
/* The node of a class as a governor. */
NodeReference classNode(Emitter &e, TreeState &ts, ClassUse objectClass);
NodeReference fieldNode(Emitter &e, TreeState &ts, ClassUse objectClass, const ClassField &field);
void fillOpenField(Emitter &e, TreeState &ts, RecNr nr, TypeUse use);
void allocateFields(Emitter &e, TreeState &ts);
bool isPredefinedClass(const ClassUse &objectClass);

/* --- emitconstraints.cpp, emitsubtypes.cpp --- */

void emitConstraints(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers);
/* The sizes that SIZE constraints leave, as the tree holds them. */
NumberSet constrainedSizes(Emitter &e, const TreeState &ts, TypeUse type);
std::vector<RecNr> emitInheritedValues(Emitter &e, TreeState &ts, RecNr nr, TypeUse governor);
/* Lower and upper end of all nodes by their own constraints; all values have to be there. */
void setEndpoints(Emitter &e, TreeState &ts);

/* How one expression is to be made. */
struct ExpressionContext {
    enum Mode : std::uint8_t { Values, Sizes, Characters } mode = Values;
    PlaceNr place = 0;     /* of the type that is constrained, as governor and for components */
    TypeUse type;          /* the same */
    const InstanceFrame *frame = nullptr;
    bool isListed = false; /* the elements are asked for one by one, as those of a field's set */
};
RecNr emitExpression(Emitter &e, TreeState &ts, const Constraint &constraint, const Scope *scope,
                     const ExpressionContext &context);
RecNr emitSpec(Emitter &e, TreeState &ts, const ConstraintSpec &spec, const Scope *scope,
               const ExpressionContext &context);
RecNr operatorSub(TreeState &ts, SubKind kind, const std::vector<RecNr> &parts);
/* True if a constraint that may be extended later is left out of trees, or kept. */
bool isDropped(const TreeState &ts, const ConstraintSpec &spec);
ExtensionView viewOf(const TreeState &ts);

/* --- emitvalues.cpp --- */

/* A value governed by the type at `place`; 0 after a refusal. */
RecNr emitValue(Emitter &e, TreeState &ts, ValueUse value, TypeUse governor, PlaceNr place,
                int status);
/* Fills the record of a definition. */
void fillValue(Emitter &e, TreeState &ts, RecNr nr, const Datum &datum, PlaceNr place);
RecNr emitDatum(Emitter &e, TreeState &ts, const Datum &datum, PlaceNr place, int status);
RecNr integerValue(TreeState &ts, std::int64_t number, RecNr governor, int status);
bool isHeldArc(const Number &arc); /* trees have arcs of 32 bits */
void emitArcs(Emitter &e, TreeState &ts, RecNr nr, std::span<const DatumArc> arcs,
              std::span<const Number> all);
bool referToValue(Emitter &e, TreeState &ts, RecNr nr, const Assignment *definition);
void governBy(Emitter &e, TreeState &ts, RecNr value, PlaceNr place);

/* --- emitobjects.cpp, emitsets.cpp --- */

void emitObjectDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment);
/* An object in a set or a field: a reference, or its settings. */
RecNr emitObject(Emitter &e, TreeState &ts, const ObjectUse &use, int status);
RecNr emitObjectReference(Emitter &e, TreeState &ts, ValueUse value, ClassUse objectClass,
                          int status);
void emitSetDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment);
/* The hidden node of a set in a setting of a field. */
RecNr hiddenSet(Emitter &e, TreeState &ts, SetUse set, TypeUse governor, bool ofObjects);

/* --- emitplaces.cpp --- */

PlaceNr placeOfNode(TreeState &ts, RecNr nr); /* of this tree */
PlaceNr placeOfNode(TreeState &ts, NodeReference node);
PlaceNr componentPlace(TreeState &ts, PlaceNr parent, std::string_view name);
PlaceNr elementPlace(TreeState &ts, PlaceNr parent);
/* Fills in all numbers that were put off; all trees have to be complete. */
void resolvePlaces(Emitter &e, TreeState &ts);
/* The node at the end of a chain of references, through the trees. */
struct TreeNode {
    TreeState *tree = nullptr;
    RecNr nr = 0;
    TNode &rec() const { return tree->tree().t(nr); }
};
TreeNode baseNode(Emitter &e, TreeNode node);
TreeState *treeOfModule(Emitter &e, TreeState &ts, std::int32_t moduleNr);

/* --- emitrecursion.cpp --- */

/* Marks types that contain themselves, and chooses the forms of lists that depend on it. */
void markRecursion(Emitter &e, TreeState &ts);
/* Homes and items of lists have no member for the widest numbers without a sign. */
void narrowHeldNumbers(Emitter &e, TreeState &ts);

} // namespace asntree
