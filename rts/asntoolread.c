/* Reading files: their formats, and the octets in them. */

#if !defined _POSIX_C_SOURCE && (defined __unix__ || defined __APPLE__)
#define _POSIX_C_SOURCE 200809L
#endif

#include "asntoolrun.h"

#include <errno.h>
#if defined __unix__ || defined __APPLE__
#include <sys/stat.h>
#endif

/* --- whole files --- */

#if defined __unix__ || defined __APPLE__

/* Opening a pipe would wait for its writer. */
BOOLE asnIsFile (const char *name)
{
  struct stat status;
  return strcmp (name, "-") == 0 || stat (name, &status) == 0;
}

size_t asnSizeOfFile (const char *name)
{
  struct stat status;
  return strcmp (name, "-") != 0 && stat (name, &status) == 0 && S_ISREG (status.st_mode) ? (size_t)status.st_size : 0;
}

#else

BOOLE asnIsFile (const char *name)
{
  FILE *file = strcmp (name, "-") == 0 ? stdin : fopen (name, "rb");
  if (file && file != stdin)
    (void)fclose (file);
  return file != NULL;
}

size_t asnSizeOfFile (const char *name)
{
  (void)name;
  return 0;
}

#endif

static BOOLE readStream (ASN_TOOL *tool, FILE *in)
{
  char piece[16384];
  size_t length;
  asnEmpty (&tool->raw);
  asnAdd (&tool->raw, "", 0); /* an empty file has a place in memory, too */
  while ((length = fread (piece, 1, sizeof piece, in)) > 0)
    asnAdd (&tool->raw, piece, length);
  return !ferror (in) && !tool->raw.failed;
}

BOOLE asnReadFile (ASN_TOOL *tool, const char *name)
{
  const BOOLE isStandard = strcmp (name, "-") == 0;
  FILE *in = isStandard ? stdin : fopen (name, "rb");
  BOOLE done;
  if (!in) {
    (void)fprintf (stderr, "%s: %s: %s\n", tool->program, name, strerror (errno));
    return FALSE;
  }
  errno = 0;
  done = readStream (tool, in);
  if (!done)
    (void)fprintf (stderr, "%s: %s: %s\n", tool->program, name, errno ? strerror (errno) : "can't be read");
  if (!isStandard)
    (void)fclose (in);
  if (tool->raw.failed)
    asnDrop (&tool->raw);
  return done;
}

/* --- formats --- */

static BOOLE isBlank (int c)
{
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

static int base64Digit (int c)
{
  if (c >= 'A' && c <= 'Z')
    return c - 'A';
  if (c >= 'a' && c <= 'z')
    return c - 'a' + 26;
  if (c >= '0' && c <= '9')
    return c - '0' + 52;
  return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/* Adds the octets of digits that stand in pairs, with blanks, colons or commas between them; an "0x" in
   front of a pair is passed over. */
static BOOLE takeHex (ASN_GROWING *to, const char *p, size_t length)
{
  const char *end = p + length;
  while (p < end) {
    if (isBlank (*p) || *p == ':' || *p == ',') {
      p++;
    } else if (end - p >= 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
      p += 2;
    } else if (end - p >= 2 && asnAddFromHex (to, p, 2)) {
      p += 2;
    } else {
      return FALSE;
    }
  }
  return TRUE;
}

/* Several texts, each with "=" at its end where it needs that, may stand behind one another. */
static BOOLE takeBase64 (ASN_GROWING *to, const char *p, size_t length)
{
  uint32 word = 0, digits = 0, filled = 0;
  for (; length > 0; length--, p++) {
    const int digit = base64Digit (*p);
    if (isBlank (*p))
      continue;
    if (digit < 0 && (*p != '=' || digits + filled < 2))
      return FALSE;
    if (digit >= 0 && filled > 0)
      return FALSE;
    word = word << 6 | (uint32)(digit < 0 ? 0 : digit);
    digits += digit >= 0;
    filled += digit < 0;
    if (digits + filled < 4)
      continue;
    for (uint32 i = 0; i + 1 < digits; i++)
      asnAddChar (to, (char)(word >> (16 - 8 * i)));
    word = digits = filled = 0;
  }
  return digits + filled == 0;
}

static const char *findText (const char *p, const char *end, const char *text)
{
  const size_t length = strlen (text);
  for (; (size_t)(end - p) >= length; p++) {
    p = (const char *)memchr (p, text[0], (size_t)(end - p) - length + 1);
    if (!p)
      return NULL;
    if (memcmp (p, text, length) == 0)
      return p;
  }
  return NULL;
}

/* All blocks; headers of a block end with an empty line. */
static BOOLE takePem (ASN_GROWING *to, const char *p, size_t length)
{
  const char *end = p + length;
  uint32 blocks = 0;
  while ((p = findText (p, end, "-----BEGIN ")) != NULL) {
    const char *behind = findText (p, end, "-----END "), *line = (const char *)memchr (p, '\n', (size_t)(end - p));
    const char *headers;
    if (!behind || !line || line > behind)
      return FALSE;
    headers = findText (line + 1, behind, "\n\n");
    if (headers && memchr (line, ':', (size_t)(headers - line)))
      line = headers;
    if (!takeBase64 (to, line, (size_t)(behind - line)))
      return FALSE;
    p = behind + 1;
    blocks++;
  }
  return blocks > 0;
}

BOOLE asnReadOctets (ASN_TOOL *tool, int format)
{
  BOOLE done = TRUE;
  asnEmpty (&tool->octets);
  asnAdd (&tool->octets, "", 0);
  if (format == FORMAT_BINARY) { /* the two change places */
    ASN_GROWING raw = tool->raw;
    tool->raw = tool->octets;
    tool->octets = raw;
  } else if (tool->raw.length > 0) {
    done = (format == FORMAT_HEX      ? takeHex
            : format == FORMAT_BASE64 ? takeBase64
                                      : takePem) (&tool->octets, tool->raw.text, tool->raw.length);
  }
  if (!done || tool->octets.failed)
    (void)fprintf (stderr, "%s: %s: not %s\n", tool->program, tool->file,
                   format == FORMAT_HEX ? "hexadecimal" : format == FORMAT_BASE64 ? "base64" : "PEM");
  return done && !tool->octets.failed;
}

/* --- telling formats apart --- */

/* UTF-8 without control characters. */
static BOOLE isText (const char *text, size_t length)
{
  const BYTE_TYPE *p = (const BYTE_TYPE *)text, *end = p + length;
  while (p < end) {
    uint32 character;
    if (!asnTakeCharacter (&p, end, &character) || (character < ' ' && !isBlank ((int)character)))
      return FALSE;
  }
  return TRUE;
}

/* Text or JSON: an object begins with a string and a colon, or ends at once. */
static int formatOfValues (const char *p, size_t length)
{
  const char *end = p + length;
  while (p < end && isBlank (*p))
    p++;
  if (p == end || (*p != '{' && *p != '[' && *p != '"'))
    return p < end && ((*p >= '0' && *p <= '9') || *p == '-' || *p == 't' || *p == 'f' || *p == 'n') &&
                   !memchr (p, ':', (size_t)(end - p)) && !(end - p >= 2 && p[1] == '-')
               ? FORMAT_JSON
               : FORMAT_TEXT;
  if (*p != '{')
    return FORMAT_JSON;
  for (p++; p < end && isBlank (*p); p++) {
  }
  if (p < end && *p != '"')
    return *p == '}' ? FORMAT_JSON : FORMAT_TEXT;
  for (p++; p < end && *p != '"'; p++)
    p += *p == '\\';
  for (p++; p < end && isBlank (*p); p++) {
  }
  return p < end && *p == ':' ? FORMAT_JSON : FORMAT_TEXT;
}

int asnDetectFormat (const ASN_TOOL *tool)
{
  const char *p = tool->raw.text;
  const size_t length = tool->raw.length;
  ASN_GROWING trial = { NULL, 0, 0, FALSE };
  int format = FORMAT_BINARY;
  if (tool->in != FORMAT_UNKNOWN)
    return tool->in;
  if (tool->command == COMMAND_ENCODE)
    return formatOfValues (p, length);
  if (length == 0 || !isText (p, length))
    return FORMAT_BINARY;
  if (findText (p, p + length, "-----BEGIN ") && takePem (&trial, p, length))
    format = FORMAT_PEM;
  else if (takeHex (&trial, p, length))
    format = FORMAT_HEX;
  else if (takeBase64 (&trial, p, length))
    format = FORMAT_BASE64;
  else if (tool->command == COMMAND_CONVERT || formatOfValues (p, length) == FORMAT_JSON ||
           memchr (p, '{', length))
    format = formatOfValues (p, length);
  asnDrop (&trial);
  return format;
}
