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
    return {cDefTypeName(type) + " *", "home"};
}

Parameter entryParameter(AsnType *type) {
    if (isMorlaApplication(getModuleOfType(type)))
        return {"ASNHOME **", "hometab"};
    return homeParameter(type);
}

/* The function that tells the type of an ANY, which is the user's. */
Text cAnyFunctionName(const char *prefix, AsnType *type) {
    return concat(prefix, cTypeId(type));
}

/* "ASNG_F(ASNCODG *asncodg) " */
Text contextParameter(GIndex gIndex) {
    return concat("ASNG_F(", cGetGType(gIndex), " *", cGetGName(gIndex), ") ");
}

/* "ASNG_F(asncodg)" */
Text contextArgument(GIndex gIndex) {
    return concat("ASNG_F(", cGetGName(gIndex), ")");
}

/* A head up to its ")"; an empty context is left out. */
void writeHead(int file, bool isProto, const Text &name, const Text &context,
               const Text &parameter) {
    putF(file, isProto ? "extern " : "", "void ", name, " (");
    taviAddItem(isProto ? ITEM_EXTERN : ITEM_FUNCTION, file, {name, "()"});
    putF(file, context);
    putF(file, parameter);
}

/* extern void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home); */
void writeProto(int file, const Text &name, GIndex gIndex, AsnType *type, const Text &parameter) {
    resetIndentLevel(file);
    if (isAnsiC(type))
        writeHead(file, true, name, contextParameter(gIndex), parameter);
    else
        writeHead(file, true, name, "", "/* " + parameter + " */");
    putF(file, ");\n");
}

/* void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home)
   or
   void eMsg (ASNG_F(asncodg) home)
   ASNG_DEF(ASNCODG *asncodg)
   Msg *home; */
void writeDef(int file, const char *prefix, GIndex gIndex, AsnType *type,
              const Parameter &parameter) {
    const Text name = prefix + getDefTypeId(type);
    resetIndentLevel(file);
    if (isAnsiC(type)) {
        writeHead(file, false, name, contextParameter(gIndex), parameter.text());
        putF(file, ")\n");
    } else {
        writeHead(file, false, name, contextArgument(gIndex) + " ", parameter.name);
        putF(file, ")\n");
        putF(file, "ASNG_DEF(", cGetGType(gIndex), " *", cGetGName(gIndex), ")\n");
        putF(file, parameter.text(), ";\n");
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

Text cFunctionName(std::string_view prefix, AsnType *type) {
    return concat(prefix, getDefBaseTypeId(type));
}

void cFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    const Text name = prefix + getDefTypeId(type);
    writeProto(file, name, gIndex, type, homeParameter(type).text());
}

void cBaseFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeProto(file, cFunctionName(prefix, type), gIndex, type, cDefBaseTypeName(type) + " *home");
}

void cFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeDef(file, prefix, gIndex, type, homeParameter(type));
}

void cFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    putF(file, cFunctionName(prefix, type), " (");
    putF(file, contextArgument(gIndex));
    putF(file, " ", cHome(type, HOME_ADDRESS));
    putF(file, ");\n");
}

void cEntryFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    const Text name = prefix + getDefTypeId(type);
    writeProto(file, name, gIndex, type, entryParameter(type).text());
}

void cEntryFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeDef(file, prefix, gIndex, type, entryParameter(type));
}

void cAnyFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type) {
    writeProto(file, cAnyFunctionName(prefix, type), gIndex, type, "ANY *, BYTE_TYPE *");
}

void cAnyFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type,
                     AsnType *classifier) {
    putF(file, cAnyFunctionName(prefix, type), " (");
    putF(file, contextArgument(gIndex));
    putF(file, " ", cHome(type, HOME_ADDRESS), ",");
    if (classifier == nullptr) {
        putF(file, " NULL);\n");
        return;
    }
    putF(file, " (BYTE_TYPE *)");
    putF(file, "(", cAnyDefinedByClassifierTypeHome(classifier), "));\n");
}
