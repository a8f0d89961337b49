#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "store/ketradef.h"

/* The layout of records in a file: for each field its offset and width there, and its place in the
   record in memory. One table of rows for each kind serves the reader, and the writer of trees that
   tests and examples use. All numbers are big-endian; bytes that no row names are reserved. */
struct RecField {
    std::uint16_t offset; /* in the file's record */
    std::uint8_t width;   /* bytes of one element: 1, 2 or 4 */
    std::uint8_t count;   /* elements, one behind the other both in the file and in memory */
    std::uint16_t member; /* offset in the record in memory */
};

/* The rows of a kind from REC_MNODE to REC_SNODE; empty for others. */
std::span<const RecField> recLayout(RecKind kind);

/* From `recSize[kind]` bytes of a file to the record at `record`, and the other way round; encoding
   leaves reserved bytes as they are. */
void decodeRec(RecKind kind, const std::uint8_t *bytes, void *record);
void encodeRec(RecKind kind, const void *record, std::uint8_t *bytes);
