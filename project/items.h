#pragma once

#include <initializer_list>

#include "project/browser.h"

struct AsnModule;
struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct AsnType;
struct AsnValue;

/* What generators tell the browser tree. All of it does nothing while there are no outputs. */

/* Kinds of C items. */
inline constexpr const char *ITEM_TYPEDEF = "typedef";
inline constexpr const char *ITEM_DEFINE = "define";
inline constexpr const char *ITEM_MACRO = "macro";
inline constexpr const char *ITEM_VARIABLE = "variable";
inline constexpr const char *ITEM_EXTERN = "extern";
inline constexpr const char *ITEM_FUNCTION = "function";
inline constexpr const char *ITEM_TABLE_ITEM = "table item";

/* Begins and ends the tree of a run: the root, with the summary open; the file and the end of both.
   Fatal error 2 if a file can't be opened. */
void taviBeginProject();
void taviEndProject();
/* The module is under work from now on. */
void taviBeginModule(AsnModule *module);

/* The definition is under work from now on: its node below that of the module is found or made. A
   type without a name stands for the nearest definition around it; without one, nothing changes.
   Nameless objects of a module share a node. */
void taviUseTypeNode(AsnType *type);
void taviUseClassNode(AsnObjClass *objClass);
void taviUseObjectNode(AsnObject *object);
void taviUseObjectSetNode(AsnObjectSet *objectSet);
/* The type by whose name the value was defined; the module if it was no definition. */
void taviUseTypeNodeOfValue(AsnValue *value);

/* What is under work now is so again at the end of the block. */
class TaviNodeScope {
public:
    TaviNodeScope() : node_(g_taviTypeNode) {}
    ~TaviNodeScope() { g_taviTypeNode = node_; }
    TaviNodeScope(const TaviNodeScope &) = delete;
    TaviNodeScope &operator=(const TaviNodeScope &) = delete;

private:
    BrowserNode *node_;
};

/* Adds the item whose name, given in parts, has just been written to `file`,
   on the line that was written to last. Nothing happens for file 0. */
void taviAddItem(BrowserNode *parent, const char *kind, int file, std::initializer_list<Part> name);
/* The same below what is under work. */
inline void taviAddItem(const char *kind, int file, std::initializer_list<Part> name) {
    taviAddItem(g_taviTypeNode, kind, file, name);
}
/* The same for the define in `line`, "#define red_Color 1\n", which was written whole. */
void taviAddDefine(int file, const Text &line);

/* A warning about a line of the module's source, to the summary. */
void taviWarn(AsnModule *module, std::int32_t line, const char *title, const char *text);
