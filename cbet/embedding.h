#pragma once

struct AsnObjClass;
struct AsnType;

/* Lines of C that a user embedded in the ASN.1 text, copied to the place in a file that he named.
   The tool's output layer, which lies below this room, writes them; the tool sets them before it
   starts. */
struct EmbeddingHooks {
    /* The text of the type and of its definitions, and that of the type's own position alone. */
    void (*printTypeEmbeddingOptions)(int slot, AsnType *type, int place) = nullptr;
    void (*printLocalTypeEmbeddingOptions)(int slot, AsnType *type, int place) = nullptr;
    /* The text of a class and of what it was derived from. */
    void (*printObjClassEmbeddingOptions)(int slot, AsnObjClass *objClass, int place) = nullptr;
};
extern EmbeddingHooks embeddingHooks;
