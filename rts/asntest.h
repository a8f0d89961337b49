/* What the sources of the asking and printing functions share. */

#ifndef ASNTEST_H
#define ASNTEST_H

#include "asntst.ext"

#include "asnint.h"

#ifdef __cplusplus
extern "C" {
#endif

static inline BOOLE asnTestFailed (const ASNTSTG *g)
{
  return g->util.error.code != ASN_OK;
}

/* --- contexts --- */

/* Writes the way to the component in hand, "Msg.lines[3].article", which loses its beginning if it is
   longer than the room. */
void asnTestPath (const ASNTSTG *g, char *text, size_t room);

/* The name that the type in hand gives a number, or null. */
const char *asnNameOfNumber (const ASNTSTG *g, sint64 value);
ASN_NAMED_NUMBER *asnNumberOfName (ASNTSTG *g, const char *name);

/* --- words of a dialogue --- */

/* ASN_WORD_ is a number or an identifier; ASN_NAME_ is one with a colon behind it. The text of a string
   has its escapes, that of digits no blanks. */
enum {
  ASN_NO_WORD_, ASN_END_, ASN_OPEN_, ASN_CLOSE_, ASN_DASH_, ASN_NAME_, ASN_MARKER_, ASN_WORD_,
  ASN_STRING_, ASN_HEX_DIGITS_, ASN_BIT_DIGITS_, ASN_BAD_WORD_
};
#define ASN_NO_CHAR_ (EOF - 1)

/* The word in hand, read if there is none; g->text holds its characters until the next is read. */
int asnPeekWord (ASNTSTG *g);
void asnTakeWord (ASNTSTG *g);
/* What is wrong with the word in hand. A person is told and may answer once more: true, without a word in
   hand. Else the dialogue ends there. */
BOOLE asnRefuseWord (ASNTSTG *g, int error);
/* Takes the word in hand if it is of that kind, or refuses it for good. */
BOOLE asnExpectWord (ASNTSTG *g, int word);
/* Room for `size` characters in g->text; false after an error. */
BOOLE asnRoomForText (ASNTSTG *g, size_t size);

/* --- levels --- */

/* Opens the component in hand; asking takes its brace. Null after an error. */
ASN_TEST_LEVEL *asnPushLevel (ASNTSTG *g, int mainType);
void asnPopLevel (ASNTSTG *g);
ASN_TEST_LEVEL *asnTopLevel (ASNTSTG *g);
/* Opens a structure for a builtin type that is asked for in components. */
void asnAskLevel (ASNTSTG *g);
static inline BOOLE asnHasLevel (int mainType)
{
  return (mainType >= TYP_SEQ && mainType <= TYP_ANY) || mainType == TYP_OPEN;
}

/* A frame from digits in hand, or null for none. */
FRAME_PTR asnFrameFromDigits (ASNTSTG *g);

/* --- strings --- */

/* Octets from hexadecimal digits in hand. */
void asnOctetsFromDigits (const ASNTSTG *g, BYTE_TYPE *octets);

/* --- printing --- */

/* Comes to the place of a component or element and prints its name; false if nothing is printed. */
BOOLE asnPriBegin (ASNTSTG *g, const char *name);
void asnPriEnd (ASNTSTG *g);
/* A new line between braces. */
void asnPriLine (ASNTSTG *g);
/* A value that has no text. */
void asnPriNothing (ASNTSTG *g);
void asnPriDigits (ASNTSTG *g, const BYTE_TYPE *octets, uint32 length);

#ifdef __cplusplus
}
#endif

#endif /*ASNTEST_H*/
