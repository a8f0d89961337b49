#pragma once

#include <memory>
#include <optional>

#include "base/call.h"
#include "model/backend.h"
#include "model/walk.h"

/* Handles on values: from the record at which a value is met along its references, and the walks
   over the values of a module and the components of a value. The current records move in all of
   these. */

/* A value as it was met (its position) and as it is in the end (its base). */
struct AsnValue : Position<AsnValue, VNode> {
    using Position::Position;

    NodePlace governorPlace;           /* of its type; none in an infinity value */
    std::unique_ptr<AsnType> governor; /* partial; made by getTypeOfValue at the first question */
    std::int32_t stringLength = 0;     /* bits, octets or characters; 0 for other values */
};

/* Fills `value` from the current VNode. `kind` is KIND_VALUE or KIND_NAMED_NUMBER. Fatal error 13 if the
   value has no governing type, 15 for references that come back to themselves. */
void getValuePath(AsnValue *father, AsnValue *value, int kind);

/* A handle on `nr`, a value of the module `modRec`; null if it is no value. */
std::unique_ptr<AsnValue> newValueByNumber(ModRec *modRec, RecNr nr);

/* The values of a list that belongs to a value or type and begins at a record, step by step. They belong
   to `ownerModule` or, without it, to the module of the list. */
class ValueListWalk {
public:
    ValueListWalk(AsnModule *ownerModule, const NodePlace &first, AsnValue *father, int kind);
    /* Valid up to the next step; null at the end. */
    AsnValue *next();

private:
    AsnModule *walkModule_;
    AsnModule *ownerModule_;
    AsnValue *father_;
    int kind_;
    ListWalk walk_;
    std::optional<AsnValue> value_;
};

/* The values of a module, `nbr` counts the calls from 0. */
void forEachValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func);
void forEachVisValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func);
/* The value or named number at `nr`, with number 0, if walks don't leave it out. */
void forValueByRecNr(AsnModule *module, Call<void(AsnValue *value, int nbr)> func, RecNr nr,
                     int kind);

/* The component values that a structured value has, the elements of a list value. */
void forEachValueComp(AsnValue *value, Call<void(AsnValue *value, AsnValue *comp, int nbr)> func);
/* Every component of the governing type with its number, and the component value, or null, with its
   number, or -1. */
void forEachPresentOrAbsentValueComp(
    AsnValue *value,
    Call<void(AsnValue *value, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr)>
        func);
