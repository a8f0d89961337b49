#pragma once

#include "model/backend.h"

struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct AsnValue;
struct BEClassMetaRec;
struct BEObjMetaRec;
struct BEObjSetMetaRec;
struct BEValMetaRec;

/* What the model needs of the generator that is built on it; the tool sets them before the first
   handle is made. A null hook does nothing, and makes no record. */
struct ModelHooks {
    /* Completes a module's record when a handle on the module is made; may be called again. */
    void (*initBEModMetaRec)(AsnModule *module, BEModMetaRec *meta) = nullptr;

    /* The generator's record of a finished handle, null for none. It may not start a walk of types.
     */
    BETypMetaRec *(*newBETypMetaRec)(AsnType *type) = nullptr;
    void (*deleteBETypMetaRec)(AsnType *type, BETypMetaRec *meta) = nullptr;
    /* An option written on a type (text as stored). They come from the position to the base; `last`
       marks those of the base. `meta` may be null. */
    bool (*typeBEOptionOK)(AsnType *type, BETypMetaRec *meta, const char *option,
                           bool last) = nullptr;

    /* The same for values. */
    BEValMetaRec *(*newBEValMetaRec)() = nullptr;
    void (*deleteBEValMetaRec)(BEValMetaRec *meta) = nullptr;
    bool (*valueBEOptionOK)(AsnValue *value, BEValMetaRec *meta, const char *option) = nullptr;

    /* The same for classes, which have `last` as types do, objects and object sets. Neither the
       record of a class nor that of a set may start a walk of its kind. */
    BEClassMetaRec *(*newBEClassMetaRec)(AsnObjClass *objClass) = nullptr;
    void (*deleteBEClassMetaRec)(BEClassMetaRec *meta) = nullptr;
    bool (*classBEOptionOK)(AsnObjClass *objClass, BEClassMetaRec *meta, const char *option,
                            bool last) = nullptr;
    BEObjMetaRec *(*newBEObjMetaRec)(AsnObject *object) = nullptr;
    void (*deleteBEObjMetaRec)(BEObjMetaRec *meta) = nullptr;
    bool (*objectBEOptionOK)(AsnObject *object, BEObjMetaRec *meta, const char *option) = nullptr;
    BEObjSetMetaRec *(*newBEObjSetMetaRec)() = nullptr;
    void (*deleteBEObjSetMetaRec)(BEObjSetMetaRec *meta) = nullptr;
    bool (*objectSetBEOptionOK)(AsnObjectSet *objectSet, BEObjSetMetaRec *meta,
                                const char *option) = nullptr;
};
extern ModelHooks modelHooks;
