#pragma once

#include "store/ketradef.h"

/* Small questions that are asked of record numbers and kinds everywhere. */

/* The three kinds that mark a class. */
inline bool isClassKind(int mainType) {
    return mainType == TYP_CLASS || mainType == TYP_TYPE_ID || mainType == TYP_ABSTR_STX;
}

/* SEQUENCE, SET and CHOICE. */
inline bool isStructureKind(int mainType) {
    return mainType == TYP_SEQ || mainType == TYP_SET || mainType == TYP_CHOICE;
}

inline bool isSequenceOrSetKind(int mainType) {
    return mainType == TYP_SEQ || mainType == TYP_SET;
}

inline bool isListKind(int mainType) {
    return mainType == TYP_SEQOF || mainType == TYP_SETOF;
}

inline bool isRestrCharStringKind(int mainType) {
    return (mainType >= TYP_NUMSTR && mainType <= TYP_UNISTR) || mainType == TYP_OBJDESCR;
}

/* Bit, octet and character strings. */
inline bool isStringKind(int mainType) {
    return mainType == TYP_BITSTR || mainType == TYP_OCTSTR || isRestrCharStringKind(mainType);
}

/* What a size constraint can speak of. */
inline bool hasSizeKind(int mainType) {
    return isStringKind(mainType) || isListKind(mainType);
}
