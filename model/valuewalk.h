#pragma once

#include <memory>
#include <optional>

#include "base/call.h"
#include "model/backend.h"
#include "store/records.h"

/* Handles on values: from the record at which a value is met along its references, and the walks
   over the values of a module and the components of a value. The current records move in all of
   these. */

struct BEValMetaRec; /* the generator's record of a value */

/* A value as it was met (its position) and as it is in the end (its base). */
struct AsnValue {
    AsnModule *walkModule = nullptr;  /* its cursors walk this value; borrowed */
    AsnModule *ownerModule = nullptr; /* getModuleOfValue; borrowed */
    AsnModule *ownModule = nullptr;   /* owned stand-in if the walk is in another module, or null */
    AsnValue *father = nullptr;       /* enclosing value, null at the top level; borrowed */
    AsnType *governor = nullptr;      /* partial, on a module of its own; both owned; null in an
                                         infinity value */

    ModRec *posModule = nullptr; /* the record at which the value was met */
    RecNr posRecord = 0;
    FixRec valueId;              /* name of the position; its id is null if it has none */
    std::int32_t compStatus = 0; /* of the position: 0 and 1 mark a named number */

    ModRec *baseModule = nullptr; /* the record at which the references end */
    RecNr baseRecord = 0;
    FixRec baseId; /* name of the base */
    VNode base;    /* the base record with inherited flags */

    int compCounter = 0;             /* running number in a walk over components */
    int nesting = 0;                 /* fathers above */
    std::int32_t stringLength = 0;   /* bits, octets or characters; 0 for other values */
    std::optional<ChainGuard> guard; /* bounds the walk that the handle belongs to */

    bool hasCommentOption = false;   /* the position holds a comment option */
    BEValMetaRec *metaRec = nullptr; /* owned */
};

/* An empty handle; getValuePath fills it. */
AsnValue *newAsnValue(AsnModule *walkModule, AsnModule *ownerModule);
/* Gives back all that the handle owns; null is left alone. */
void delAsnValue(AsnValue *value);
/* Before a handle is filled that the walk of `father` (null at the top level) goes through: its
   modules, its father and the bound of the walk stay, all else is emptied. */
void clearAsnValue(AsnValue *value);

/* Fills `value`, whose modules are set, from the current VNode. `kind` is KIND_VALUE or
   KIND_NAMED_NUMBER. Fatal error 13 if the value has no governing type, 15 for references that come
   back to themselves. */
void getValuePath(AsnValue *father, AsnValue *value, int kind);

/* Makes the next record of the walk (KIND_VALUE, KIND_OBJECT, KIND_FIELD, KIND_NAMED_NUMBER)
   current and moves the cursor behind it; false, and cursor 0, at the end. `withSkipped` includes
   records that walks leave out. Fatal error 13 for another kind. */
bool nextVNode(AsnModule *module, int kind, bool withSkipped);
/* Reads record `nr` for a walk of `kind`, which goes on behind it, whatever its status is; false if
   it isn't of the right sort (an object for KIND_OBJECT, none for KIND_VALUE) or `nr` is 0. */
bool vNodeByNumber(AsnModule *module, int kind, RecNr nr, bool withSkipped);

/* A handle on `nr`, a value of the module `modRec`, on a module handle of its own that goes with
   it; null if it is no value. */
AsnValue *newValueByNumber(ModRec *modRec, RecNr nr);

/* Walks step by step; each refills one handle, the last step deletes it and returns null. */
AsnValue *firstValue(AsnModule *module);
AsnValue *nextValue(AsnValue *value);
/* A list that belongs to a value or type, reached by its first record; null for an empty one. It is
   walked with `walkModule` or, if it stands in another module, with a handle of its own. Without
   `ownerModule` the values belong to the module that is walked. In a list of KIND_VALUE the status
   doesn't count. */
AsnValue *firstListed(AsnModule *walkModule, AsnModule *ownerModule, const NodePlace &first,
                      AsnValue *father, int kind);
AsnValue *nextListed(AsnValue *value, int kind);
AsnValue *firstValueComp(AsnValue *value);
AsnValue *nextValueComp(AsnValue *comp);

/* The values of a module, `nbr` counts the calls from 0. */
void forEachValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func);
void forEachVisValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func);
/* The value or named number at `nr`, with number 0, if walks don't leave it out. */
void forValueByRecNr(AsnModule *module, Call<void(AsnValue *value, int nbr)> func, RecNr nr,
                     int kind);

/* The component values that a structured value has, the elements of a list value. */
void forEachValueComp(AsnValue *value, Call<void(AsnValue *value, AsnValue *comp, int nbr)> func);
void forEachValueElem(AsnValue *value, Call<void(AsnValue *value, AsnValue *elem, int nbr)> func);
/* Every component of the governing type with its number, and the component value, or null, with its
   number, or -1. */
void forEachPresentOrAbsentValueComp(
    AsnValue *value,
    Call<void(AsnValue *value, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr)>
        func);

/* The comments that were written on the value itself, as parseBECommentOption gives them. */
void forEachValueCommentOption(AsnValue *value,
                               Call<void(AsnValue *value, const char *option, int nbr)> func);
