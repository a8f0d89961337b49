#pragma once

struct AsnType;

/* Lines of C that a user embedded in the ASN.1 text, copied to the place in a file that he named.
   The tool's output layer, which lies below this room, writes them; the tool sets both before it
   starts. */
struct EmbeddingHooks {
    /* The text of the type and of its definitions, and that of the type's own position alone. */
    void (*printTypeEmbeddingOptions)(int slot, AsnType *type, int place) = nullptr;
    void (*printLocalTypeEmbeddingOptions)(int slot, AsnType *type, int place) = nullptr;
};
extern EmbeddingHooks embeddingHooks;
