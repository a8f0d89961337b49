#pragma once

#include "store/typetable.h"

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

/* Bit, octet and character strings. */
inline bool isStringKind(int mainType) {
    return typeRow(mainType).string != StringSort::NONE;
}

inline bool isRestrCharStringKind(int mainType) {
    return typeRow(mainType).string >= StringSort::TEXT8;
}

/* Character strings with one octet for each character. */
inline bool isText8Kind(int mainType) {
    return typeRow(mainType).string == StringSort::TEXT8;
}

/* What a size constraint can speak of. */
inline bool hasSizeKind(int mainType) {
    return isStringKind(mainType) || isListKind(mainType);
}

inline bool testOptionBit(std::uint32_t bits, int bit) {
    return ((bits >> (static_cast<unsigned>(bit) % 32u)) & 1u) != 0;
}
