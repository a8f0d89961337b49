#include "cbet/functions.h"

#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/names.h"
#include "cbet/vars.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

const char *const externPrefix = "extern ";

namespace {

/* ORDER GINDEX */
const char *const reEntrantType[GIDX_COUNT] = {"",        "ASNCODG", "ASNTSTG",
                                               "ASNUTIG", "ASNPERG", "ASNNERG"};
const char *const reEntrantName[GIDX_COUNT] = {"",        "asncodg", "asntstg",
                                               "asnutig", "asnperg", "asnnerg"};

int knownGIndex(int gIndex) {
    return gIndex > GIDX_NONE && gIndex < GIDX_COUNT ? gIndex : GIDX_NONE;
}

bool isAnsiC(AsnType *type) {
    return getGlobalOptions(getModuleOfType(type))->ansiC != 0;
}

void callWriter(CFuncArgWriter writer, int file, AsnType *type) {
    if (writer != nullptr)
        writer(file, type);
}

/* The parameter of a function, as its type (with what binds to the name) and its name. */
struct Parameter {
    Text type;
    const char *name;
    Text text() const { return type + name; }
};

Parameter homeParameter(AsnType *type) {
    Text id;
    return {cDefTypeName(id, nullptr, type, " *"), "home"};
}

Parameter entryParameter(AsnType *type) {
    if (isMorlaApplication(getModuleOfType(type)))
        return {"ASNHOME **", "hometab"};
    return homeParameter(type);
}

/* The place of the context in a head; empty texts write none. */
void setContext(CFuncHead *head, int gIndex, bool withType) {
    if (knownGIndex(gIndex) == GIDX_NONE)
        return;
    head->gType = withType ? cGetGType(gIndex) : nullptr;
    head->gName = cGetGName(gIndex);
}

/* extern void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home); */
void writeProto(int file, const char *prefix, const char *name, int gIndex, const CFuncArgs *args,
                AsnType *type, const Text &parameter) {
    static const CFuncArgs noArgs;
    const CFuncArgs &more = args != nullptr ? *args : noArgs;
    const bool ansi = isAnsiC(type);
    const Text argText = ansi ? parameter : "/* " + parameter + " */";
    resetIndentLevel(file);
    CFuncHead head;
    head.linkage = externPrefix;
    head.args = args;
    head.prefix = prefix;
    head.name = name;
    if (ansi)
        setContext(&head, gIndex, true);
    head.preFunc = more.protoPreFunc;
    head.argText = argText.c_str();
    head.argFunc = more.protoArgFunc;
    head.postFunc = more.protoPostFunc;
    head.post = ";\n";
    cFunc(file, type, head);
}

/* void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home) */
void writeAnsiDef(int file, CFuncHead &head, int gIndex, const CFuncArgs &more, AsnType *type,
                  const Parameter &parameter) {
    const Text argText = parameter.text();
    setContext(&head, gIndex, true);
    head.preFunc = more.ansiPreFunc;
    head.argText = argText.c_str();
    head.argFunc = more.ansiArgFunc;
    head.postFunc = more.ansiPostFunc;
    cFunc(file, type, head);
}

/* void eMsg (ASNG_F(asncodg) home)
   ASNG_DEF(ASNCODG *asncodg)
   Msg *home; */
void writeOldDef(int file, CFuncHead &head, int gIndex, const CFuncArgs &more, AsnType *type,
                 const Parameter &parameter) {
    setContext(&head, gIndex, false);
    head.preFunc = more.oldPreFunc;
    head.argText = parameter.name;
    head.argFunc = more.oldArgFunc;
    head.postFunc = more.oldPostFunc;
    cFunc(file, type, head);
    if (knownGIndex(gIndex) != GIDX_NONE && more.oldArgFunc == nullptr)
        printfToF(file, "ASNG_DEF(%s *%s)\n", cGetGType(gIndex), cGetGName(gIndex));
    callWriter(more.declPreFunc, file, type);
    if (more.declArgFunc != nullptr)
        more.declArgFunc(file, type);
    else
        printfToF(file, "%s;\n", parameter.text().c_str());
    callWriter(more.declPostFunc, file, type);
}

void writeDef(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type,
              const Parameter &parameter) {
    static const CFuncArgs noArgs;
    const CFuncArgs &more = args != nullptr ? *args : noArgs;
    Text name;
    getDefTypeId(name, nullptr, type, nullptr);
    resetIndentLevel(file);
    CFuncHead head;
    head.args = args;
    head.prefix = prefix;
    head.name = name.c_str();
    head.post = "\n";
    if (isAnsiC(type))
        writeAnsiDef(file, head, gIndex, more, type, parameter);
    else
        writeOldDef(file, head, gIndex, more, type, parameter);
    cResetVars();
}

} // namespace

const char *cGetGType(int gIndex) {
    return reEntrantType[knownGIndex(gIndex)];
}
const char *cGetGName(int gIndex) {
    return reEntrantName[knownGIndex(gIndex)];
}

void cFunc(int file, AsnType *type, const CFuncHead &head) {
    const char *returnType = head.returnType;
    if (returnType == nullptr && head.args != nullptr)
        returnType = head.args->returnType;
    printfToF(file, "%s%s %s%s (", orEmpty(head.linkage),
              returnType != nullptr ? returnType : "void", orEmpty(head.prefix),
              orEmpty(head.name));
    taviAddItem(head.linkage == externPrefix ? ITEM_EXTERN : ITEM_FUNCTION, file,
                {head.prefix, head.name, "()"});
    if (head.argFunc == nullptr) {
        const char *macro = head.argText != nullptr ? "ASNG_F" : "ASNG_L";
        const char *blank = head.argText != nullptr ? " " : "";
        if (head.gType != nullptr)
            printfToF(file, "%s(%s *%s)%s", macro, head.gType, orEmpty(head.gName), blank);
        else if (head.gName != nullptr)
            printfToF(file, "%s(%s)%s", macro, head.gName, blank);
    }
    callWriter(head.preFunc, file, type);
    if (head.argFunc != nullptr)
        head.argFunc(file, type);
    else
        wToF(file, head.argText);
    callWriter(head.postFunc, file, type);
    printfToF(file, ")%s", orEmpty(head.post));
}

void cFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                    AsnType *type) {
    Text name;
    getDefTypeId(name, nullptr, type, nullptr);
    writeProto(file, prefix, name.c_str(), gIndex, args, type, homeParameter(type).text());
}

void cBaseFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                        AsnType *type) {
    Text name, parameter;
    getDefBaseTypeId(name, nullptr, type, nullptr);
    writeProto(file, prefix, name.c_str(), gIndex, args, type,
               cDefBaseTypeName(parameter, nullptr, type, " *home"));
}

void cFunctionDef(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type) {
    writeDef(file, prefix, gIndex, args, type, homeParameter(type));
}

void cFunctionRef(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type) {
    static const CFuncArgs noArgs;
    const CFuncArgs &more = args != nullptr ? *args : noArgs;
    const bool context = knownGIndex(gIndex) != GIDX_NONE;
    Text text;
    wToF(file, getDefBaseTypeId(text, prefix, type, " ("));
    if (context)
        printfToF(file, "ASNG_F(%s)", cGetGName(gIndex));
    callWriter(more.callPreFunc, file, type);
    if (more.callHomeFunc != nullptr)
        more.callHomeFunc(file, type);
    else
        wToF(file, cHome(text, context ? " " : nullptr, true, type, nullptr, nullptr));
    callWriter(more.callPostFunc, file, type);
    wToF(file, ");\n");
}

void cVoidFunctionProto(int file, const char *prefix, int gIndex, AsnType *type) {
    cFunctionProto(file, prefix, gIndex, nullptr, type);
}

void cVoidFunctionDef(int file, const char *prefix, int gIndex, AsnType *type) {
    cFunctionDef(file, prefix, gIndex, nullptr, type);
}

void cVoidFunctionRef(int file, const char *prefix, int gIndex, AsnType *type) {
    cFunctionRef(file, prefix, gIndex, nullptr, type);
}

void cEntryFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                         AsnType *type) {
    Text name;
    getDefTypeId(name, nullptr, type, nullptr);
    writeProto(file, prefix, name.c_str(), gIndex, args, type, entryParameter(type).text());
}

void cEntryFunctionDef(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                       AsnType *type) {
    writeDef(file, prefix, gIndex, args, type, entryParameter(type));
}

void cAnyFunctionProto(int file, const char *prefix, int gIndex, AsnType *type) {
    Text name;
    cTypeId(name, nullptr, type, nullptr);
    writeProto(file, prefix, name.c_str(), gIndex, nullptr, type, "ANY *, BYTE_TYPE *");
}

void cAnyFunctionRef(int file, const char *prefix, int gIndex, AsnType *type, AsnType *classifier) {
    Text text;
    wToF(file, cTypeId(text, prefix, type, " ("));
    if (knownGIndex(gIndex) != GIDX_NONE)
        printfToF(file, "ASNG_F(%s)", cGetGName(gIndex));
    wToF(file, cHome(text, " ", true, type, nullptr, ","));
    if (classifier == nullptr) {
        wToF(file, " NULL);\n");
        return;
    }
    wToF(file, " (BYTE_TYPE *)");
    wToF(file, cAnyDefinedByClassifierTypeHome(text, "(", true, classifier, "));\n"));
}
