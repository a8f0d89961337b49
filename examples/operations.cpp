#include "examples/modules.h"

/* operations.asn */

namespace {

/* Fields of the two classes, in which objects set them. */
struct Fields {
    TypeNode argument, result, errors, hours, undo, operationCode;
    TypeNode detail, errorCode, again, text;
};

Fields makeClasses(TreeWriter &w) {
    Fields f;
    f.argument = w.typeField("Argument").optional();
    f.result = w.typeField("Result").optional();
    f.errors = w.setField("Errors", w.ref("ERROR")).optional();
    f.hours = w.setField("Hours", w.ref("Hour")).optional();
    f.undo = w.valueField("undo", w.ref("OPERATION")).optional();
    f.operationCode = w.valueField("code", w.ref("Code"));
    w.define("OPERATION",
             w.objectClass({f.argument, f.result, f.errors, f.hours, f.undo, f.operationCode}));
    f.detail = w.typeField("Detail").optional();
    f.errorCode = w.valueField("code", w.ref("Code"));
    f.again = w.valueField("again", w.boolean());
    f.again.defaultTo(w.boolValue(false));
    f.text = w.valueField("text", w.string(TYP_IA5STR, 1, 40));
    w.define("ERROR", w.objectClass({f.detail, f.errorCode, f.again, f.text}));
    return f;
}

/* An error; the settings stand in the order of the fields. */
ValueNode makeError(TreeWriter &w, const Fields &f, const char *detail, int code, bool again,
                    const char *text) {
    std::vector<ValueNode> parts;
    if (detail != nullptr)
        parts.push_back(w.fieldType(f.detail, w.ref(detail)));
    parts.push_back(w.fieldValue(f.errorCode, w.intValue(code)));
    if (again)
        parts.push_back(w.fieldValue(f.again, w.boolValue(true)));
    parts.push_back(w.fieldValue(f.text, w.textValue(TYP_IA5STR, text)));
    return w.listValue(TYP_CLASS, parts);
}

struct Operation {
    const char *argument = nullptr;
    const char *result = nullptr;
    RecNr errors = 0;
    TypeNode hours = {};
    const char *undo = nullptr;
    int code = 0;
};

/* A set as a field holds it: its governor with the elements as constraint. */
TypeNode setOf(TreeWriter &w, const char *governor, RecNr elements) {
    TypeNode set = w.ref(governor).constrained(elements);
    set->nodeFlags |= NODE_SET;
    return set;
}

void makeOperation(TreeWriter &w, const Fields &f, const char *name, const Operation &op) {
    std::vector<ValueNode> parts;
    if (op.argument != nullptr)
        parts.push_back(w.fieldType(f.argument, w.ref(op.argument)));
    if (op.result != nullptr)
        parts.push_back(w.fieldType(f.result, w.ref(op.result)));
    if (op.errors != 0)
        parts.push_back(w.fieldType(f.errors, setOf(w, "ERROR", op.errors)));
    if (op.hours.nr != 0)
        parts.push_back(w.fieldType(f.hours, op.hours));
    if (op.undo != nullptr)
        parts.push_back(w.fieldValue(f.undo, w.valueRef(op.undo)));
    parts.push_back(w.fieldValue(f.operationCode, w.intValue(op.code)));
    const ValueNode object = w.listValue(TYP_CLASS, parts);
    w.defineValue(name, w.ref("OPERATION"), object);
}

void makeTypes(TreeWriter &w) {
    w.define("Code", w.integer(0, 255));
    w.define("Hour", w.integer(0, 23));
    w.define("Days", w.integer(0, 90)).entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("BookNumber", w.integer(0, 999999)).entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("ReaderNumber", w.integer(0, 99999)).entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("Loan", w.sequence({w.comp("book", w.ref("BookNumber")).implicit(0),
                                 w.comp("reader", w.ref("ReaderNumber")).implicit(1),
                                 w.comp("days", w.ref("Days")).implicit(2).optional()}))
        .entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("Query", w.choice({w.comp("title", w.string(TYP_IA5STR, 1, 60)).implicit(0),
                                w.comp("author", w.string(TYP_IA5STR, 1, 60)).implicit(1),
                                w.comp("number", w.ref("BookNumber")).implicit(2)}))
        .entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("BookList", w.listOf(TYP_SEQOF, w.ref("BookNumber"), 0, 20))
        .entry(ENTRY_ENCODE | ENTRY_DECODE);
}

/* Sets name what is defined before them; a union of all is written out element by element. */
RecNr setRef(TreeWriter &w, const char *name) {
    return w.includes(w.findType(name));
}

RecNr objectRef(TreeWriter &w, const char *name) {
    return w.single(w.valueRef(name));
}

/* Tables that other sources see, with sets beside the rows and their sizes in front. */
void setOptions(TreeWriter &w) {
    for (const char *option : {"-TAB=yes", "-TABF=yes", "-TABO=yes", "-TDEFS=yes"})
        w.option(option);
    w.backendOption("-TAB-VALUE-SET-N=yes");
}

} // namespace

void makeOperations(TreeWriter &w) {
    setOptions(w);
    const Fields f = makeClasses(w);
    const auto error = [&](const char *name, const char *detail, int code, bool again,
                           const char *text) {
        const ValueNode object = makeError(w, f, detail, code, again, text);
        w.defineValue(name, w.ref("ERROR"), object);
    };
    const auto object = [&](const char *name) { return objectRef(w, name); };
    const auto set = [&](const char *name) { return setRef(w, name); };
    error("noSuchBook", "BookNumber", 1, false, "no such book");
    error("noSuchReader", "ReaderNumber", 2, false, "no such reader");
    error("lentOut", "Days", 3, true, "lent out");
    error("tooManyLoans", nullptr, 4, false, "too many loans");
    error("deskShut", nullptr, 5, true, "desk is shut");
    const auto unite = [&](std::initializer_list<RecNr> parts) { return w.sub(SUB_UNION, parts); };
    const auto define = [&](const char *name, const char *governor, RecNr elements) {
        w.defineSet(name, w.ref(governor), elements);
    };
    define("BookErrors", "ERROR", unite({object("noSuchBook"), object("lentOut")}));
    define("ReaderErrors", "ERROR", unite({object("noSuchReader"), object("tooManyLoans")}));
    define("LendErrors", "ERROR",
           unite({set("BookErrors"), set("ReaderErrors"), object("deskShut")}));

    const auto hour = [&](int n) { return w.single(w.intValue(n)); };
    define("OpeningHours", "Hour", unite({w.range(9, 12), hour(15), hour(17)}));
    makeOperation(w, f, "search", {.argument = "Query", .result = "BookList", .code = 10});
    makeOperation(w, f, "lend",
                  {.argument = "Loan",
                   .result = "Days",
                   .errors = set("LendErrors"),
                   .hours = w.findType("OpeningHours"),
                   .undo = "giveBack",
                   .code = 11});
    makeOperation(w, f, "giveBack",
                  {.argument = "Loan",
                   .errors = set("BookErrors"),
                   .hours = w.findType("OpeningHours"),
                   .code = 12});
    makeOperation(w, f, "renew",
                  {.argument = "Loan", .result = "Days", .errors = set("LendErrors"), .code = 13});
    /* An object without a name is no definition. */
    const ValueNode waiting = makeError(w, f, nullptr, 6, false, "too many readers wait");
    waiting.governedBy(w.findType("ERROR"))->compStatus = 0;
    makeOperation(w, f, "reserve",
                  {.argument = "Loan",
                   .result = "Days",
                   .errors = unite({set("ReaderErrors"), w.single(waiting)}),
                   .undo = "cancel",
                   .code = 14});
    makeOperation(w, f, "cancel", {.argument = "Loan", .errors = object("noSuchBook"), .code = 15});
    makeOperation(w, f, "shut",
                  {.hours = setOf(w, "Hour", unite({hour(12), hour(17)})), .code = 16});

    define("ReaderOperations", "OPERATION",
           unite({object("search"), object("reserve"), object("cancel")}));
    define("DeskOperations", "OPERATION",
           unite({set("ReaderOperations"), object("lend"), object("giveBack"), object("renew"),
                  w.sub(SUB_EXTENDED_VALUE_SET)}));
    define("AllOperations", "OPERATION", unite({set("DeskOperations"), object("shut")}));
    makeTypes(w);
}
