#include "gen/messages.h"

#include <cstdio>

#include "base/toolinfo.h"
#include "cbet/names.h"
#include "gen/meta.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"

/* VELMO>>> generating Mod */
void verboseMsg(AsnModule *module, int level, const char *text) {
    const int verbosity = getMetaVerbosity(module);
    if (verbosity != VERBOSITY_QUIET && verbosity >= level)
        std::printf("%s>>> %s\n", backendName.c_str(), text);
}

void warning(const char *text) {
    std::fprintf(stderr, "WARNING: %s\n", text);
}

void typeWarning(AsnType *type, const char *text) {
    Text place = "Module " + getModuleRef(getModuleOfType(type)) + ", line ";
    place += concat(getTypeDefinitionLine(type), ", ");
    if (isDefinedType(type))
        place += "type " + convertUnderscores(getTypeRef(type));
    else if (isComponentType(type))
        place += "element " + convertUnderscores(getTypeCompRef(type));
    else
        place += "element " + convertUnderscores(cTypeId(type));
    warning(place.c_str());
    warning(text);
}

void notYetSupported(AsnType *type, const char *text) {
    typeWarning(type, (Text(text) + " not yet supported, sorry.").c_str());
}

void bugInTool(const char *text) {
    std::fprintf(stderr, "Warning VELMO: %s\n", text);
}
