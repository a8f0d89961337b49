#include "asntree/check.h"
#include "asntree/constraints.h"

namespace asntree {

void checkValue(Compilation &c, ValueUse use, TypeUse governor) {
    const Datum *datum = readDatum(c, use, governor);
    if (datum->kind != DatumKind::Bad)
        checkDatum(c, *datum, governor);
}

void checkSetElements(Compilation &c, SetUse use, TypeUse governor) {
    if (!use || !c.checkedUses.insert({use.set, use.scope}).second)
        return;
    checkConstraint(c, {use.set, use.scope, governor}, governor);
}

} // namespace asntree
