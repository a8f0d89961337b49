/* The words of a dialogue, read from a script or from a person who is asked for them. */

#include "asntest.h"

#include <stdlib.h>

/* A word that is longer than any value can be. */
#define MOST_TEXT ((size_t)ASN_MEMORY_LIMIT)
#define FIRST_TEXT ((size_t)64)

static const char *const mainTypeNames[] = {
  "BOOLEAN",         "INTEGER",          "ENUMERATED",      "REAL",            "BIT STRING",
  "OCTET STRING",    "NULL",             "SEQUENCE",        "SEQUENCE OF",     "SET",
  "SET OF",          "CHOICE",           "ANY",             "EMBEDDED PDV",    "OBJECT IDENTIFIER",
  "NumericString",   "PrintableString",  "TeletexString",   "VideotexString",  "VisibleString",
  "IA5String",       "GraphicString",    "GeneralString",   "BMPString",       "UniversalString",
  "CHARACTER STRING", "GeneralizedTime", "UTCTime",         "EXTERNAL",        "EXTERNAL",
  "ObjectDescriptor", "INSTANCE OF",
};

/* --- characters --- */

/* "Msg.name (IA5String, optional): " */
static void askPerson (ASNTSTG *g)
{
  char path[ASN_PATH_TEXT];
  const size_t nrOfNames = sizeof mainTypeNames / sizeof mainTypeNames[0];
  if (!g->out)
    return;
  asnTestPath (g, path, sizeof path);
  fprintf (g->out, "%s (%s%s): ", path,
           (size_t)g->mainType < nrOfNames ? mainTypeNames[g->mainType] : "value",
           g->status == TCS_OPTIONAL ? ", optional" : "");
  (void)fflush (g->out);
}

static int readChar (ASNTSTG *g)
{
  int c = g->ahead;
  if (c == EOF)
    return EOF;
  g->ahead = ASN_NO_CHAR_;
  if (c != ASN_NO_CHAR_)
    return c;
  if (g->lineBegins) {
    askPerson (g);
    g->lineBegins = FALSE;
  }
  c = g->in ? getc (g->in) : EOF;
  if (c == EOF)
    g->ahead = EOF; /* an end stays one */
  if (c == '\n') {
    g->lineBegins = TRUE;
    g->lastLine++;
  }
  return c;
}

/* Puts the last character back. */
static void unreadChar (ASNTSTG *g, int c)
{
  g->ahead = c;
}

static void skipLine (ASNTSTG *g)
{
  int c;
  do
    c = readChar (g);
  while (c != '\n' && c != EOF);
}

/* The first character that is neither blank nor comma nor comment. */
static int firstChar (ASNTSTG *g)
{
  for (;;) {
    int c = readChar (g);
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ',')
      continue;
    if (c == '-') {
      int next = readChar (g);
      if (next == '-') {
        skipLine (g);
        continue;
      }
      unreadChar (g, next);
    }
    return c;
  }
}

BOOLE asnRoomForText (ASNTSTG *g, size_t size)
{
  size_t room = g->room ? g->room : FIRST_TEXT;
  char *text;
  if (size < g->room)
    return TRUE;
  while (room <= size && room < MOST_TEXT)
    room *= 2;
  text = room <= size ? NULL : (char *)realloc (g->text, room);
  if (!text) {
    asnRaise (&g->util, LACK_OF_MEMORY);
    return FALSE;
  }
  g->text = text;
  g->room = room;
  return TRUE;
}

static BOOLE addChar (ASNTSTG *g, int c)
{
  if (!asnRoomForText (g, g->length + 1))
    return FALSE;
  g->text[g->length++] = (char)c;
  g->text[g->length] = 0;
  return TRUE;
}

/* --- words --- */

static BOOLE isWordChar (int c)
{
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '.' || c == '+';
}

/* A number or an identifier, and the colon behind a name. */
static int readWord (ASNTSTG *g, int c)
{
  for (; isWordChar (c); c = readChar (g))
    if (!addChar (g, c))
      return ASN_BAD_WORD_;
  while (c == ' ' || c == '\t')
    c = readChar (g);
  if (c == ':')
    return strcmp (g->text, "...") == 0 ? ASN_MARKER_ : ASN_NAME_;
  unreadChar (g, c);
  return strcmp (g->text, "-") == 0 ? ASN_DASH_ : ASN_WORD_;
}

/* A string ends on its line. */
static int readString (ASNTSTG *g)
{
  for (;;) {
    int c = readChar (g);
    if (c == '"')
      return ASN_STRING_;
    if (c < ' ') {
      unreadChar (g, c);
      return ASN_BAD_WORD_;
    }
    if (!addChar (g, c))
      return ASN_BAD_WORD_;
    if (c == '\\') {
      c = readChar (g);
      if (c < ' ') {
        unreadChar (g, c);
        return ASN_BAD_WORD_;
      }
      if (!addChar (g, c))
        return ASN_BAD_WORD_;
    }
  }
}

static BOOLE isHexDigit (int c)
{
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/* '0A1B'H or '0110'B, over any number of lines. */
static int readDigits (ASNTSTG *g)
{
  BOOLE areBits = TRUE;
  int c;
  while ((c = readChar (g)) != '\'') {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n')
      continue;
    if (!isHexDigit (c)) {
      unreadChar (g, c);
      return ASN_BAD_WORD_;
    }
    areBits = areBits && (c == '0' || c == '1');
    if (!addChar (g, c))
      return ASN_BAD_WORD_;
  }
  c = readChar (g);
  if (c == 'H')
    return ASN_HEX_DIGITS_;
  if (c == 'B' && areBits)
    return ASN_BIT_DIGITS_;
  unreadChar (g, c);
  return ASN_BAD_WORD_;
}

int asnPeekWord (ASNTSTG *g)
{
  int c;
  if (asnTestFailed (g))
    return ASN_END_;
  if (g->word != ASN_NO_WORD_)
    return g->word;
  if (!asnRoomForText (g, 0))
    return ASN_END_;
  g->length = 0;
  g->text[0] = 0;
  c = firstChar (g);
  g->line = g->lastLine;
  if (c == EOF)
    g->word = ASN_END_;
  else if (c == '{')
    g->word = ASN_OPEN_;
  else if (c == '}')
    g->word = ASN_CLOSE_;
  else if (c == '"')
    g->word = readString (g);
  else if (c == '\'')
    g->word = readDigits (g);
  else
    g->word = isWordChar (c) ? readWord (g, c) : ASN_BAD_WORD_;
  return g->word;
}

void asnTakeWord (ASNTSTG *g)
{
  g->word = ASN_NO_WORD_;
  g->taken++;
}

BOOLE asnRefuseWord (ASNTSTG *g, int error)
{
  if (asnTestFailed (g))
    return FALSE;
  if (!g->out || g->word == ASN_END_) {
    asnRaise (&g->util, g->word == ASN_END_ ? INPUT_FAIL : error);
    return FALSE;
  }
  fprintf (g->out, "%s, please answer once more\n", asnErrorName (error));
  skipLine (g);
  g->word = ASN_NO_WORD_;
  return TRUE;
}

BOOLE asnExpectWord (ASNTSTG *g, int word)
{
  if (asnPeekWord (g) == word) {
    asnTakeWord (g);
    return TRUE;
  }
  asnRaise (&g->util, INPUT_FAIL);
  return FALSE;
}
