#pragma once

struct AsnType;

/* How a decoder asks whether the tag that it has read begins a type. */
struct TagTest {
    bool isElse = false; /* "else " stands in front */
    bool isEqual = true; /* false: the tag is none of those that the type begins with */
};

/* if (d_CurrTag () == TAG(TAG_CTX, TAG_PRI, 0)): the outermost tag of `type`. The alternatives of an
   untagged CHOICE stand one on a line. A CHOICE that holds itself is fatal error 15. */
void genTagTest(int file, AsnType *type, TagTest test);
