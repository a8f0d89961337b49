#pragma once

#include "project/browser.h"

struct AsnModule;
struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct AsnType;
struct AsnValue;

/* Nodes of definitions. Their names are those of ASN.1, with hyphens; they stand at the source file
   and line of the definition. None of them is inserted yet. The current records move. */

/* Named after the prefix of the outputs, without a place. Fatal error 1 without outputs. */
BrowserNode *taviBrowserNewProjectTree(const char *kind, const char *aux1, const char *aux2);
BrowserNode *taviBrowserNewModuleNode(AsnModule *module, const char *kind, const char *aux1,
                                      const char *aux2);
/* A type or class that refers to one of another module stands where that one is defined. */
BrowserNode *taviBrowserNewTypeNode(AsnType *type, const char *kind, const char *aux1,
                                    const char *aux2);
BrowserNode *taviBrowserNewClassNode(AsnObjClass *objClass, const char *kind, const char *aux1,
                                     const char *aux2);
BrowserNode *taviBrowserNewObjectSetNode(AsnObjectSet *objectSet, const char *kind,
                                         const char *aux1, const char *aux2);
BrowserNode *taviBrowserNewObjectNode(AsnObject *object, const char *kind, const char *aux1,
                                      const char *aux2);
