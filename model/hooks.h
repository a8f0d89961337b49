#pragma once

#include "model/backend.h"

struct AsnObjClass;

/* What the model needs of the generator that is built on it; the tool sets them before the first
   handle is made. A null hook does nothing, and makes no record. */
struct ModelHooks {
    /* Completes a module's record when the handle on the module is made. */
    void (*initBEModMetaRec)(AsnModule *module, BEModMetaRec *meta) = nullptr;

    /* The generator's record of a finished handle, null for none. It may not start a walk of types.
     */
    BETypMetaRec *(*newBETypMetaRec)(AsnType *type) = nullptr;
    void (*deleteBETypMetaRec)(BETypMetaRec *meta) = nullptr;
    /* An option written on a type (text as stored). They come from the position to the base; `last`
       marks those of the base. `meta` may be null. */
    bool (*typeBEOptionOK)(AsnType *type, BETypMetaRec *meta, const char *option,
                           bool last) = nullptr;

    /* The same for classes, whose record may not start a walk of classes. */
    BEClassMetaRec *(*newBEClassMetaRec)(AsnObjClass *objClass) = nullptr;
    void (*deleteBEClassMetaRec)(BEClassMetaRec *meta) = nullptr;
    bool (*classBEOptionOK)(AsnObjClass *objClass, BEClassMetaRec *meta, const char *option,
                            bool last) = nullptr;
};
extern ModelHooks modelHooks;
