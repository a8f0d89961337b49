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

namespace {

/* ORDER GINDEX */
constexpr const char *reEntrantType[] = {"ASNCODG", "ASNTSTG"};
constexpr const char *reEntrantName[] = {"asncodg", "asntstg"};

bool isAnsiC(AsnType *type) {
    return getGlobalOptions(getModuleOfType(type))->ansiC != 0;
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

/* "ASNG_F(ASNCODG *asncodg) " */
Text contextParameter(GIndex gIndex) {
    return formatText("ASNG_F(%s *%s) ", cGetGType(gIndex), cGetGName(gIndex));
}

/* "ASNG_F(asncodg)" */
Text contextArgument(GIndex gIndex) {
    return formatText("ASNG_F(%s)", cGetGName(gIndex));
}

/* A head up to its ")"; an empty context is left out. */
void writeHead(int file, bool isProto, const char *prefix, const Text &name, const Text &context,
               const Text &parameter) {
    printfToF(file, "%svoid %s%s (", isProto ? "extern " : "", prefix, name.c_str());
    taviAddItem(isProto ? ITEM_EXTERN : ITEM_FUNCTION, file, {prefix, name, "()"});
    wToF(file, context);
    wToF(file, parameter);
}

/* extern void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home); */
void writeProto(int file, const char *prefix, const Text &name, GIndex gIndex, AsnType *type,
                const Text &parameter) {
    resetIndentLevel(file);
    if (isAnsiC(type))
        writeHead(file, true, prefix, name, contextParameter(gIndex), parameter);
    else
        writeHead(file, true, prefix, name, "", "/* " + parameter + " */");
    wToF(file, ");\n");
}

/* void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home)
   or
   void eMsg (ASNG_F(asncodg) home)
   ASNG_DEF(ASNCODG *asncodg)
   Msg *home; */
void writeDef(int file, const char *prefix, GIndex gIndex, AsnType *type,
              const Parameter &parameter) {
    Text name = getDefTypeId(type);
    resetIndentLevel(file);
    if (isAnsiC(type)) {
        writeHead(file, false, prefix, name, contextParameter(gIndex), parameter.text());
        wToF(file, ")\n");
    } else {
        writeHead(file, false, prefix, name, contextArgument(gIndex) + " ", parameter.name);
        wToF(file, ")\n");
        printfToF(file, "ASNG_DEF(%s *%s)\n", cGetGType(gIndex), cGetGName(gIndex));
        printfToF(file, "%s;\n", parameter.text().c_str());
    }
    cResetVars();
}

} // namespace

const char *cGetGType(GIndex gIndex) {
    return reEntrantType[gIndex];
}
const char *cGetGName(GIndex gIndex) {
    return reEntrantName[gIndex];
}

void cFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    Text name = getDefTypeId(type);
    writeProto(file, prefix, name, gIndex, type, homeParameter(type).text());
}

void cBaseFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    Text parameter;
    Text name = getDefBaseTypeId(type);
    writeProto(file, prefix, name, gIndex, type,
               cDefBaseTypeName(parameter, nullptr, type, " *home"));
}

void cFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeDef(file, prefix, gIndex, type, homeParameter(type));
}

void cFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    Text text;
    putF(file, prefix, getDefBaseTypeId(type), " (");
    wToF(file, contextArgument(gIndex));
    wToF(file, cHome(text, " ", true, type, nullptr, nullptr));
    wToF(file, ");\n");
}

void cEntryFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    Text name = getDefTypeId(type);
    writeProto(file, prefix, name, gIndex, type, entryParameter(type).text());
}

void cEntryFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeDef(file, prefix, gIndex, type, entryParameter(type));
}

void cAnyFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    Text name;
    cTypeId(name, nullptr, type, nullptr);
    writeProto(file, prefix, name, gIndex, type, "ANY *, BYTE_TYPE *");
}

void cAnyFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type,
                     AsnType *classifier) {
    Text text;
    wToF(file, cTypeId(text, prefix, type, " ("));
    wToF(file, contextArgument(gIndex));
    wToF(file, cHome(text, " ", true, type, nullptr, ","));
    if (classifier == nullptr) {
        wToF(file, " NULL);\n");
        return;
    }
    wToF(file, " (BYTE_TYPE *)");
    wToF(file, cAnyDefinedByClassifierTypeHome(text, "(", true, classifier, "));\n"));
}
