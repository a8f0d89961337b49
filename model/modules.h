#pragma once

#include "base/call.h"
#include "model/backend.h"

/* Handles on modules, walks over modules, and questions asked of a module. Walks set cMP for each
   call and put it back; a missing call-back is fatal error 18. */

/* The handle on `modRec`, always the same one. The first time its source file is noted in the options and
   its meta record completed. Fatal error 9 if the module is null or has no header. */
AsnModule *getAsnModule(ModRec *modRec);

/* The modules named on the command line. */
void forEachModule(Call<void(AsnModule *module)> func);
void forFirstModule(Call<void(AsnModule *module)> func);
/* The modules that `module` imports from through imports marked for it, each once. */
void forEachExportingModule(AsnModule *module, Call<void(AsnModule *exporting)> func);
/* The whole graph of imports below a module, each module behind those that it imports from itself, in
   the order of the imports. `descends` says whether the imports of a module count too; null means that
   all do. The depth of the graph costs no stack. */
void forEachExporterFirst(AsnModule *module, Call<bool(AsnModule *exporter)> descends,
                          Call<void(AsnModule *exporter)> func);

/* True if the module takes part in a circle of imports, or imports from a module that does. The
   answers for all modules are worked out together, once in a run. */
bool isCircularImports(AsnModule *module);

Text getModuleRef(AsnModule *module);
/* The prefix of generated identifiers. */
Text getModulePrefix(AsnModule *module);
/* The ASN.1 source file. */
Text getModuleFilePath(AsnModule *module);

BEModMetaRec *getBEModMetaRec(AsnModule *module);
bool isCurrentModule(AsnModule *module);
GlobalOptions *getGlobalOptions(AsnModule *module);
/* Generation choices by category, index 1 to 16. */
const std::uint8_t *getGenArr(AsnModule *module);
/* 0 for a category outside 1 to 16. */
int getGenerationOption(AsnModule *module, int category);
/* Bit `bit` modulo 32 of the generation switches; the inverse of bit -`bit` for a negative one. */
bool testCGenerationOption(AsnModule *module, int bit);
bool isMorlaApplication(AsnModule *module);
int getNrOfVisibleTypes(AsnModule *module);
int getNrOfEntryTypes(AsnModule *module);
int getNrOfObjects(AsnModule *module);
int getNrOfObjectSets(AsnModule *module);
int getNrOfValueNodes(AsnModule *module);
/* Place in the list of all modules, from 0. */
int getUniqueModuleNr(AsnModule *module);

/* Answers kept for the record at which a type was met. */
TypeInfoCache *getTypeInfoCache(AsnType *type);
void setTypeInfoCacheBetFlag(TypeInfoCache *cache, int bit, bool value);
