#pragma once

#include <string>

#include "model/compwalk.h"
#include "model/tags.h"
#include "model/typenames.h"
#include "model/typequeries.h"

/* Handles as short texts, so that a test compares a whole walk at once. */

/* "C0 U2": class and number of each tag, the outermost first. */
inline std::string tagsOf(AsnType *type) {
    std::string text;
    forEachTag(type, [&](AsnType *, const AsnTag *tag, int) {
        text += (text.empty() ? "" : " ") + std::string(1, "UACP"[tag->tagClass]) +
                std::to_string(tag->tagNumber);
    });
    return text;
}

inline std::string nameOf(AsnType *type) {
    return getTypeRef(type);
}

/* "name/number tags" of a component, "..." for the name of an extension marker. */
inline std::string compText(AsnType *comp, int compNbr) {
    const bool isMarker = comp->base.mainType == TYP_EXTENSION_MARKER;
    std::string text = (isMarker ? "..." : nameOf(comp)) + "/" + std::to_string(compNbr);
    const std::string tags = tagsOf(comp);
    return tags.empty() ? text : text + " " + tags;
}

inline std::string forwardText(AsnType *type) {
    std::string text;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int compNbr) {
        text += (text.empty() ? "" : ", ") + compText(comp, compNbr);
    });
    return text;
}

/* The walk in reverse order, put the right way round. */
inline std::string reverseText(AsnType *type) {
    std::string text;
    forEachTypeCompRevOrd(type, [&](AsnType *, AsnType *comp, int compNbr) {
        text.insert(0, compText(comp, compNbr) + (text.empty() ? "" : ", "));
    });
    return text;
}
