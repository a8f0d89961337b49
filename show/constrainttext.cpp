#include "show/texts.h"

#include "model/constraints.h"
#include "model/typenames.h"
#include "show/references.h"
#include "show/writer.h"
#include "store/records.h"
#include "store/recordwords.h"

namespace {

void addElement(Text &list, const char *between, const Text &element) {
    if (list.size() > MAX_SHOWN)
        return;
    list.append(list.empty() ? "" : between).append(element);
}

/* An operand of an operator; a set below it stands in parentheses. */
Text operandText(AsnType *type, AsnConstraint *operand) {
    const int kind = getConstraintKind(operand);
    const Text text = constraintText(type, operand);
    const bool isSet = kind == SUB_UNION || kind == SUB_INTERSECTION || kind == SUB_EXCEPT;
    return isSet ? "(" + text + ")" : text;
}

Text setText(AsnType *type, AsnConstraint *constraint) {
    Text text;
    switch (getConstraintKind(constraint)) {
    case SUB_UNION:
        forUnionConstraint(type, constraint, [&](AsnType *, AsnConstraint *element, int) {
            addElement(text, " | ", operandText(type, element));
        });
        break;
    case SUB_INTERSECTION:
        forIntersectionConstraint(type, constraint, [&](AsnType *, AsnConstraint *element, int) {
            addElement(text, " ^ ", operandText(type, element));
        });
        break;
    case SUB_CATENATION:
        forEachCatenatedConstraint(type, constraint, [&](AsnType *, AsnConstraint *element) {
            addElement(text, ") (", constraintText(type, element));
        });
        break;
    case SUB_EXCEPT:
        forExceptConstraint(
            type, constraint, [&](AsnType *, AsnConstraint *included, AsnConstraint *excluded) {
                text = operandText(type, included) + " EXCEPT " + operandText(type, excluded);
            });
        break;
    default:
        forAllExceptConstraint(type, constraint, [&](AsnType *, AsnConstraint *excluded) {
            text = "ALL EXCEPT " + operandText(type, excluded);
        });
        break;
    }
    return text;
}

/* MIN and MAX have no record. */
Text endText(const AsnConstraint *constraint, AsnValue *end, bool isUpper) {
    const bool isWritten = (isUpper ? constraint->sub.second : constraint->sub.first) != 0;
    if (!isWritten)
        return isUpper ? "MAX" : "MIN";
    return valueText(end);
}

Text rangeText(AsnType *type, AsnConstraint *constraint) {
    Text text;
    forValueRangeConstraint(
        type, constraint,
        [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
            text = endText(constraint, low, false) + (lowClosed ? "" : "<") + ".." +
                   (highClosed ? "" : "<") + endText(constraint, high, true);
        });
    return text;
}

/* The name of the type, or what constrains a type without one. */
Text includedText(AsnType *type, AsnConstraint *constraint) {
    readRec(constraint->module, REC_VNODE, constraint->sub.first);
    const NodePlace place = {constraint->module, vNode.refRecord};
    const TNode &contained = storedTNode(place.module, place.nr);
    if (contained.nameIdx != 0)
        return typeRecordName(constraint->module, place);
    if (contained.mainType == TYP_SYNONYM && contained.refRecord != 0 && contained.auxRecord == 0) {
        ModRec *module =
            contained.refModule < 2 ? place.module : getModPtr(place.module, contained.refModule);
        return typeRecordName(constraint->module, {module, contained.refRecord});
    }
    Text text;
    forContSubtypeConstraint(type, constraint,
                             [&](AsnType *, AsnType *inside, AsnConstraint *inner) {
                                 addElement(text, ") (", constraintText(inside, inner));
                             });
    const Text word = typeWord(contained.mainType);
    return text.empty() ? word : word + " (" + text + ")";
}

const char *presenceWord(const AsnConstraint *constraint) {
    switch (getPresenceConstraintKind(constraint)) {
    case PRESENCE_PRESENT:
        return " PRESENT";
    case PRESENCE_ABSENT:
        return " ABSENT";
    case PRESENCE_OPTIONAL:
        return " OPTIONAL";
    default:
        return "";
    }
}

/* An element that says nothing but presence is an empty node of this kind. */
Text innerText(AsnType *type, AsnConstraint *inner) {
    if (getConstraintKind(inner) == SUB_EXCEPTION)
        return {};
    const Text text = constraintText(type, inner);
    return text.empty() ? "" : " (" + text + ")";
}

/* What is named, as it is written. Of other components there are nodes in no module. */
Text componentsText(AsnType *type, AsnConstraint *constraint) {
    const bool isFull = (constraint->sub.subFlags & SUB_FULL_SPECIFICATION) != 0;
    Text text = isFull ? "" : "...";
    forWithComponentsConstraint(
        type, constraint, [&](AsnType *, AsnType *comp, AsnConstraint *inner, int) {
            if (inner->module != nullptr)
                addElement(text, ", ",
                           getTypeRef(comp) + innerText(comp, inner) + presenceWord(inner));
        });
    return "WITH COMPONENTS {" + text + "}";
}

Text wrapped(const char *word, const Text &inner) {
    return Text(word) + " (" + inner + ")";
}

} // namespace

Text constraintText(AsnType *type, AsnConstraint *constraint) {
    const int kind = getConstraintKind(constraint);
    Text text;
    switch (kind) {
    case SUB_UNION:
    case SUB_INTERSECTION:
    case SUB_CATENATION:
    case SUB_EXCEPT:
    case SUB_ALL_EXCEPT:
        return setText(type, constraint);
    case SUB_RANGE:
        return rangeText(type, constraint);
    case SUB_SINGLE_VALUE:
        forSingleValueConstraint(type, constraint,
                                 [&](AsnType *, AsnValue *value) { text = valueText(value); });
        return text;
    case SUB_SIZE:
        forSizeConstraint(type, constraint, [&](AsnType *, AsnConstraint *size) {
            text = wrapped("SIZE", constraintText(type, size));
        });
        return text;
    case SUB_ALPHABET:
        forPermittedAlphabetConstraint(type, constraint, [&](AsnType *, AsnConstraint *alphabet) {
            text = wrapped("FROM", constraintText(type, alphabet));
        });
        return text;
    case SUB_INCLUDES:
        return "INCLUDES " + includedText(type, constraint);
    case SUB_WITH_COMPONENT:
        forWithComponentConstraint(
            type, constraint, [&](AsnType *, AsnType *element, AsnConstraint *inner) {
                text = wrapped("WITH COMPONENT", constraintText(element, inner));
            });
        return text;
    case SUB_WITH_COMPONENTS:
        return componentsText(type, constraint);
    case SUB_EXTENDED_VALUE_SET:
        return "...";
    default:
        return orEmpty(subKindName(kind));
    }
}

Text constraintsText(AsnType *type, bool localOnly) {
    Text text;
    const auto add = [&](AsnType *owner, AsnConstraint *constraint) {
        const Text one = constraintText(owner, constraint);
        if (!one.empty() && text.size() <= MAX_SHOWN)
            text.append(text.empty() ? "(" : " (").append(one).append(")");
    };
    if (localOnly)
        forEachLocalTypeConstraint(type, add);
    else
        forEachTypeConstraint(type, add);
    return text;
}
