#include <algorithm>
#include <iterator>

#include "asntree/listtext.h"
#include "store/recordwords.h"

/* Values, constraints and tags in listings. */

namespace asntree {

namespace {

RecNr valueString(const VNode &value) {
    return static_cast<RecNr>(static_cast<std::uint32_t>(valueBytes(value, 4, 4)));
}

std::string integerText(std::int64_t number) {
    if (number == INT64_MIN)
        return "MIN";
    return number == INT64_MAX ? "MAX" : std::to_string(number);
}

/* Characters of the wide strings beyond ASCII by their numbers. */
template <typename String> std::string wideText(const String *text) {
    if (text == nullptr)
        return "\"\"";
    std::string out = "\"";
    for (auto ch : *text) {
        const auto code = static_cast<std::uint32_t>(ch);
        if (code >= 0x20 && code < 0x7F)
            out += static_cast<char>(code);
        else
            out += "<" + std::to_string(code) + ">";
    }
    return out + "\"";
}

std::string realText(const VNode &value) {
    const auto mantissa = static_cast<std::int64_t>(valueBytes(value, 0, 8));
    const auto base = static_cast<std::int16_t>(valueBytes(value, 8, 2));
    const auto exponent = static_cast<std::int16_t>(valueBytes(value, 10, 2));
    return "{mantissa " + std::to_string(mantissa) + ", base " + std::to_string(base) +
           ", exponent " + std::to_string(exponent) + "}";
}

/* The name of an element: of an object's field that of the field, which governs it. */
std::string elementName(const Lister &lister, const VNode &part, bool ofObject) {
    if (!ofObject)
        return stringAt(lister.tree, part.nameIdx);
    const std::string name = typeNameAt(lister, part.governorModule, part.governorRec);
    return "&" + name.substr(name.find('.') == name.npos ? 0 : name.find('.') + 1);
}

std::string listText(Lister &lister, RecNr first, int depth, bool ofObject = false) {
    std::string text = "{";
    const char *between = "";
    for (const VNode *part = recordAt(lister.tree.vNodes, first); part != nullptr;
         part = recordAt(lister.tree.vNodes, part->next)) {
        if (!lister.spend())
            return text + " ...}";
        const std::string name = elementName(lister, *part, ofObject);
        text.append(between).append(name).append(name.empty() ? "" : " ");
        text += valueText(lister, *part, depth + 1);
        between = ", ";
    }
    return text + "}";
}

std::string stringValueText(Lister &lister, const VNode &value, int depth) {
    if (value.refRecord != 0)
        return listText(lister, value.refRecord, depth);
    const RecNr nr = valueString(value);
    switch (value.valueKind) {
    case TYP_BMPSTR:
        return wideText(recordAt(lister.tree.strings16, nr));
    case TYP_UNISTR:
        return wideText(recordAt(lister.tree.strings32, nr));
    case TYP_BITSTR:
        return "'" + stringAt(lister.tree, nr) + "'B";
    case TYP_OCTSTR:
        return "'" + stringAt(lister.tree, nr) + "'H";
    default:
        return "\"" + stringAt(lister.tree, nr) + "\"";
    }
}

/* A field value that has a type or a set of its own. */
std::string fieldText(const Lister &lister, const VNode &value) {
    const TNode *type = recordAt(lister.tree.tNodes, value.refRecord);
    if (type == nullptr)
        return typeWord(value.valueKind);
    if (type->mainType == TYP_SYNONYM)
        return typeNameAt(lister, type->refModule, type->refRecord);
    return typeWord(type->mainType);
}

} // namespace

std::string valueText(Lister &lister, const VNode &value, int depth) {
    if (depth > MAX_LISTED_DEPTH || !lister.spend())
        return "...";
    switch (value.valueKind) {
    case TYP_BOOLEAN:
        return value.value[0] != 0 ? "TRUE" : "FALSE";
    case TYP_INTEGER:
    case TYP_ENUM:
        return integerText(static_cast<std::int64_t>(valueBytes(value, 0, 8)));
    case TYP_REAL:
        return realText(value);
    case TYP_NULL:
        return "NULL";
    case TYP_SYNONYM:
        return valueNameAt(lister, value.refModule, value.refRecord);
    case TYP_FIELDLIST:
        return pathText(lister, value.auxRecord);
    case TYP_EXTENSION_MARKER:
        return "...";
    case TYP_OBJID: {
        const std::string list = listText(lister, value.refRecord, depth);
        const std::string dotted = stringAt(lister.tree, valueString(value));
        return dotted.empty() ? list : list + " = " + dotted;
    }
    case TYP_SEQ:
    case TYP_SEQOF:
    case TYP_SET:
    case TYP_SETOF:
    case TYP_CHOICE:
    case TYP_EMB_PDV:
    case TYP_EXTERNAL_1990:
    case TYP_EXTERNAL_1994:
    case TYP_INSTANCE_OF:
    case TYP_CHASTR:
        return listText(lister, value.refRecord, depth);
    case TYP_CLASS:
    case TYP_TYPE_ID:
    case TYP_ABSTR_STX:
        return listText(lister, value.refRecord, depth, true);
    case TYP_BITSTR:
    case TYP_OCTSTR:
    case TYP_GENTIME:
    case TYP_UTCTIME:
        return stringValueText(lister, value, depth);
    default:
        return value.valueKind >= TYP_NUMSTR && value.valueKind <= TYP_OBJDESCR
                   ? stringValueText(lister, value, depth)
                   : fieldText(lister, value);
    }
}

namespace {

struct ConstraintWord {
    int kind;
    const char *word;
    const char *between; /* of operands; null: the parts stand in parentheses behind the word */
};
constexpr ConstraintWord constraintWords[] = {
    {SUB_UNION, "", " | "},
    {SUB_INTERSECTION, "", " ^ "},
    {SUB_CATENATION, "", ") ("},
    {SUB_EXCEPT, "", " EXCEPT "},
    {SUB_ALL_EXCEPT, "ALL EXCEPT", nullptr},
    {SUB_ALPHABET, "FROM", nullptr},
    {SUB_SIZE, "SIZE", nullptr},
    {SUB_WITH_COMPONENT, "WITH COMPONENT", nullptr},
    {SUB_WITH_COMPONENTS, "WITH COMPONENTS", nullptr},
    {SUB_TABLE, "table", nullptr},
    {SUB_USER_DEFINED, "CONSTRAINED BY", nullptr},
    {SUB_COMPONENT_RELATION, "component relation", nullptr},
    {SUB_EXCEPTION, "!", nullptr},
    {SUB_TYPE_CONSTRAINT, "type", nullptr},
    {SUB_EXTENDED_VALUE_SET, "...", nullptr},
    {SUB_PASSED_OVER, "passed over", nullptr},
};

std::string endpointText(Lister &lister, RecNr nr, const char *open, int depth) {
    const VNode *value = recordAt(lister.tree.vNodes, nr);
    return value == nullptr ? open : valueText(lister, *value, depth + 1);
}

std::string rangeText(Lister &lister, const SubRec &sub, int depth) {
    std::string text = endpointText(lister, sub.first, "MIN", depth);
    text += (sub.subFlags & SUB_LOWER_CLOSED) != 0 ? ".." : "<..";
    text += (sub.subFlags & SUB_UPPER_CLOSED) != 0 ? "" : "<";
    return text + endpointText(lister, sub.second, "MAX", depth);
}

std::string includedText(const Lister &lister, const SubRec &sub) {
    const VNode *value = recordAt(lister.tree.vNodes, sub.first);
    return "INCLUDES " +
           (value == nullptr ? "?" : typeNameAt(lister, value->refModule, value->refRecord));
}

/* Null for the kinds that have a text of their own, and for unknown ones. */
const ConstraintWord *wordOf(int kind) {
    const auto *row = std::ranges::find(constraintWords, kind, &ConstraintWord::kind);
    return row == std::end(constraintWords) ? nullptr : row;
}

bool isOperator(int kind) {
    const ConstraintWord *row = wordOf(kind);
    return row != nullptr && row->between != nullptr;
}

/* An operand, in parentheses if it is made of operands of another operator. What stands between
   those of a catenation are parentheses. */
std::string operandText(Lister &lister, const SubRec &father, RecNr nr, const SubRec &operand,
                        int depth) {
    const std::string text = constraintText(lister, nr, depth + 1);
    const bool isApart = father.subKind == SUB_CATENATION || !isOperator(father.subKind) ||
                         (father.subKind == operand.subKind && operand.subKind != SUB_EXCEPT);
    return isApart || !isOperator(operand.subKind) ? text : "(" + text + ")";
}

/* Operands of an operator, parts behind a word. */
std::string partsText(Lister &lister, const SubRec &sub, const ConstraintWord &row, int depth) {
    const bool hasParts = sub.subKind < SUB_TABLE; /* of others nothing more is known */
    std::string text;
    for (RecNr nr = hasParts ? sub.first : 0; nr != 0;) {
        const SubRec *part = recordAt(lister.tree.subRecs, nr);
        if (part == nullptr || !lister.spend())
            break;
        text.append(text.empty() ? "" : row.between == nullptr ? ", " : row.between);
        if (sub.subKind == SUB_WITH_COMPONENTS) {
            text += typeNameAt(lister, part->compModule, part->compTNode);
            text += (part->subFlags & SUB_PRESENT) != 0    ? " PRESENT"
                    : (part->subFlags & SUB_ABSENT) != 0   ? " ABSENT"
                    : (part->subFlags & SUB_OPTIONAL) != 0 ? " OPTIONAL"
                                                           : "";
        }
        /* An element that says nothing but presence is an empty record of this kind. */
        if (sub.subKind != SUB_WITH_COMPONENTS)
            text += operandText(lister, sub, nr, *part, depth);
        else if (part->subKind != SUB_EXCEPTION)
            text += " (" + constraintText(lister, nr, depth + 1) + ")";
        nr = part->next;
    }
    return row.word + (text.empty() || row.between != nullptr ? text : " (" + text + ")");
}

} // namespace

std::string constraintText(Lister &lister, RecNr first, int depth) {
    const SubRec *sub = recordAt(lister.tree.subRecs, first);
    if (sub == nullptr)
        return "?";
    if (depth > MAX_LISTED_DEPTH || !lister.spend())
        return "...";
    const VNode *value = recordAt(lister.tree.vNodes, sub->first);
    std::string text = "?";
    if (sub->subKind == SUB_RANGE)
        text = rangeText(lister, *sub, depth);
    else if (sub->subKind == SUB_SINGLE_VALUE)
        text = value == nullptr ? "?" : valueText(lister, *value, depth + 1);
    else if (sub->subKind == SUB_INCLUDES)
        text = includedText(lister, *sub);
    else if (const ConstraintWord *row = wordOf(sub->subKind))
        text = partsText(lister, *sub, *row, depth);
    return (sub->subFlags & SUB_EXCEPTION_FOLLOWS) != 0 ? text + " !" : text;
}

std::string tagsText(Lister &lister, RecNr first) {
    constexpr const char *classes[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
    std::string text;
    for (const TagRec *tag = recordAt(lister.tree.tagRecs, first); tag != nullptr;
         tag = recordAt(lister.tree.tagRecs, tag->next)) {
        if (!lister.spend())
            return text + "... ";
        const bool isKnown = tag->tagClass >= TAG_UNI && tag->tagClass <= TAG_PRV;
        text += "[" + std::string(isKnown ? classes[tag->tagClass] : "? ") +
                std::to_string(tag->tagNumber) + "] ";
        text += tag->tagMode == TAG_MODE_EXPLICIT ? "EXPLICIT " : "IMPLICIT ";
    }
    return text;
}

} // namespace asntree
