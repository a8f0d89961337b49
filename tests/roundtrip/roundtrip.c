/* Takes values of generated types through all generated functions: roundtrip [OPTION] SCRIPT ...

     -m NUMBER  decodes so many changed forms of each encoding instead, and asks for as many changed texts
     -f         lets allocations and writes fail instead
     -w FILE    writes all encodings to a file besides, as a SEQUENCE
     -s FOLDER  writes each encoding and each text to a file of its own besides, behind an octet with the
                number of its row: what fuzz programs start from
     -d TYPE    takes the files behind it for encodings of a type

   A script is named after its module and holds values as they are printed, each in lines of its own;
   what belongs to a value stands on the lines behind it:

     Msg: {
       id: 5
       ok: TRUE
     }
     = 3006 020105 0101FF       the encoding that has definite lengths
     ~ 3080 020105 0101FF 0000  another encoding of the value
     + 2480 040101 0000 = 040101  a value of the type that is printed in another way, and how it is encoded
                                again; without = as it is
     ! 3003 020105 TAG_FAIL     octets that are no value of this type, and what the decoder says
     ? { id: x } => INPUT_FAIL  a text that is none, and what asking for it says; the path that leads to
                                the component may follow

   Each value is asked for, printed, encoded, decoded, and all that once more from the result; all texts
   and all encodings have to agree, and no beginning of an encoding may pass for a value. Every row of
   the entry tables has to come up. */

#include "values.h"

#include <ctype.h>
#include <stdlib.h>

static void printOctets (const ENCODING *e)
{
  for (size_t i = 0; i < e->length; i++)
    fprintf (stderr, "%02X", e->octets[i]);
  fputc ('\n', stderr);
}

/* What the command line asks for beside the round trips. */
static int mutations;
static BOOLE starving;
static FILE *encodings;
static const char *seeds;

static BOOLE areSame (const ENCODING *a, const ENCODING *b)
{
  return a->length == b->length && memcmp (a->octets, b->octets, a->length) == 0;
}

static void expectSame (const VALUE *v, const ENCODING *a, const ENCODING *b, const char *what)
{
  if (areSame (a, b))
    return;
  fail (v, "encodings differ:", what);
  printOctets (a);
  printOctets (b);
}

/* Expects that octets are a value. */
static BOOLE isDecoded (VALUE *v, const ENTRYDESCR *row, const ENCODING *e)
{
  ASNERROR error;
  openValue (v, row);
  if (decode (v, e->octets, e->length, &error))
    return TRUE;
  fail (v, asnErrorName (error.code), "while it is decoded:");
  printOctets (e);
  return FALSE;
}

/* Decodes octets and expects the text; encoding the result has to give `again`, where it isn't null. */
static void expectDecoded (const ENTRYDESCR *row, const ENCODING *e, const char *text,
                           const ENCODING *again)
{
  VALUE v;
  if (isDecoded (&v, row, e)) {
    char *printed = print (&v);
    ENCODING own = encode (&v);
    if (strcmp (printed, text) != 0) {
      fail (&v, "is printed in another way when it was decoded", "");
      fprintf (stderr, "%s%s", text, printed);
    }
    if (again)
      expectSame (&v, &own, again, "of the decoded value");
    free (own.octets);
    free (printed);
  }
  closeValue (&v);
}

static void expectBeginningsRefused (const ENTRYDESCR *row, const ENCODING *e)
{
  /* of a long one some */
  const size_t step = e->length < 2000 ? 1 : e->length / 500;
  for (size_t length = 0; length < e->length; length += step) {
    VALUE v;
    ASNERROR error;
    openValue (&v, row);
    if (decode (&v, e->octets, length, &error))
      fail (&v, "a beginning passes for a value", "");
    closeValue (&v);
  }
}

/* --- the lines of a script --- */

/* Whether a script's value is of a type that such an application has no functions for. */
static BOOLE isWithoutHome (const char *text)
{
#if ASN_TABPARAM
  return strncmp (text, "Big-Count:", 10) == 0 || strncmp (text, "Framed:", 7) == 0;
#else
  (void)text;
  return 0;
#endif
}

static const ENTRYDESCR *rowOf (const MODULE *module, const char *line)
{
  const size_t length = strcspn (line, ":");
  for (int i = 0; i < module->nrOfRows; i++)
    if (strlen (module->rows[i].name) == length && strncmp (module->rows[i].name, line, length) == 0)
      return &module->rows[i];
  return NULL;
}

/* The digits up to the first word that has others; `rest` gets that word. */
static ENCODING octetsOf (const char *text, const char **rest)
{
  ENCODING e;
  int half = -1;
  e.octets = malloc (strlen (text) + 1);
  e.length = 0;
  for (BOOLE begins = TRUE;; text++) {
    if (isspace ((unsigned char)*text)) {
      begins = TRUE;
      continue;
    }
    if (!*text || (begins && strspn (text, "0123456789ABCDEF") < strcspn (text, " \n")))
      break;
    begins = FALSE;
    int digit = *text <= '9' ? *text - '0' : *text - 'A' + 10;
    if (half < 0) {
      half = digit;
      continue;
    }
    e.octets[e.length++] = (BYTE_TYPE)(half << 4 | digit);
    half = -1;
  }
  *rest = text;
  return e;
}

/* For what cannot be asked for: the value comes from octets, and has to last. */
static void expectKept (const ENTRYDESCR *row, const ENCODING *e, const ENCODING *expected)
{
  VALUE v;
  if (isDecoded (&v, row, e)) {
    ENCODING own = encode (&v);
    VALUE again;
#if ROUNDTRIP_DEFINITE
    expectSame (&v, &own, expected, "of the decoded value");
#endif
    if (isDecoded (&again, row, &own)) {
      char *text = print (&again);
      expectDecoded (row, expected, text, &own);
      free (text);
    }
    closeValue (&again);
    free (own.octets);
  }
  closeValue (&v);
}

static void expectRefused (const ENTRYDESCR *row, const ENCODING *e, const char *errorName)
{
  VALUE v;
  ASNERROR error;
  const char *name;
  openValue (&v, row);
  (void)decode (&v, e->octets, e->length, &error);
  name = asnErrorName (error.code);
  if (strlen (name) != strcspn (errorName, " \n") || strncmp (name, errorName, strlen (name)) != 0)
    fail (&v, "is decoded with", name);
  closeValue (&v);
}

/* "text => ERROR path" */
static void expectNotAsked (const ENTRYDESCR *row, char *line)
{
  VALUE v;
  ASNERROR error;
  char *expected = strstr (line, " => ");
  char own[ASN_PATH_TEXT + 40];
  if (!expected)
    return;
  *expected = 0;
  expected += strlen (" => ");
  expected[strcspn (expected, "\n")] = 0;
  openValue (&v, row);
  (void)askFor (&v, line, &error);
  snprintf (own, sizeof own, "%s %s", asnErrorName (error.code), error.path);
  if (strncmp (own, expected, strlen (expected)) != 0)
    fail (&v, "is asked for with", own);
  closeValue (&v);
}

/* A value in hand: its type, the text as it is printed, and the encoding of this program. */
typedef struct {
  const ENTRYDESCR *row;
  char *text;
  ENCODING encoding;
} CASE;

static void writeSeed (const ENTRYDESCR *row, const char *suffix, const void *octets, size_t length)
{
  static int number;
  char path[400];
  FILE *out;
  snprintf (path, sizeof path, "%s/%d.%s", seeds, ++number, suffix);
  out = fopen (path, "wb");
  if (!out || fputc (numberOf (row), out) == EOF || fwrite (octets, 1, length, out) != length ||
      fclose (out) != 0) {
    perror (path);
    exit (2);
  }
}

static void openCase (CASE *c, const ENTRYDESCR *row, char *asked)
{
  VALUE v;
  memset (c, 0, sizeof *c);
  openValue (&v, row);
  if (ask (&v, asked)) {
    c->row = row;
    c->text = print (&v);
    c->encoding = encode (&v);
  }
  closeValue (&v);
  if (!c->encoding.octets)
    return;
  if (encodings)
    fwrite (c->encoding.octets, 1, c->encoding.length, encodings);
  if (seeds) {
    writeSeed (row, "ber", c->encoding.octets, c->encoding.length);
    writeSeed (row, "text", c->text, strlen (c->text));
  }
  if (mutations) {
    mutate (row, &c->encoding, mutations);
    mutateText (row, c->text, mutations / 4);
    return;
  }
  if (starving) {
    starve (row, &c->encoding, c->text);
    return;
  }
  expectDecoded (row, &c->encoding, c->text, &c->encoding);
  expectBeginningsRefused (row, &c->encoding);
  openValue (&v, row);
  if (ask (&v, c->text)) {
    ENCODING own = encode (&v);
    expectSame (&v, &c->encoding, &own, "of the value asked for as printed");
    free (own.octets);
  }
  closeValue (&v);
}

static void closeCase (CASE *c)
{
  free (c->text);
  free (c->encoding.octets);
  memset (c, 0, sizeof *c);
}

static void checkLine (const CASE *c, char *line)
{
  const char *rest;
  if (mutations || starving)
    return;
  if (*line == '?') {
    expectNotAsked (c->row, line + 1);
    return;
  }
  ENCODING e = octetsOf (line + 1, &rest);
  if (*line == '!')
    expectRefused (c->row, &e, rest);
  else if (*line == '+' && *rest == '=') {
    ENCODING expected = octetsOf (rest + 1, &rest);
    expectKept (c->row, &e, &expected);
    free (expected.octets);
  } else if (*line == '+')
    expectKept (c->row, &e, &e);
  else
    expectDecoded (c->row, &e, c->text, &c->encoding);
#if ROUNDTRIP_DEFINITE
  if (*line == '=' && !areSame (&e, &c->encoding)) {
    fprintf (stderr, "%s:%d: %s is encoded as\n", script, scriptLine, c->row->name);
    printOctets (&c->encoding);
    failures++;
  }
#endif
  free (e.octets);
}

static BOOLE beginsValue (const char *line)
{
  return isalpha ((unsigned char)*line) != 0;
}

/* Reads lines up to the one that begins something else, which stays in `line`. */
static char *wholeValue (FILE *in, char *line, size_t size, BOOLE *ended)
{
  size_t length = strlen (line);
  char *text = malloc (length + 1);
  memcpy (text, line, length + 1);
  while (!(*ended = fgets (line, (int)size, in) == NULL)) {
    scriptLine++;
    if (beginsValue (line) || strchr ("=~+!?-\n", *line))
      break;
    text = realloc (text, length + strlen (line) + 1);
    strcpy (text + length, line);
    length += strlen (line);
  }
  return text;
}

static void runScript (const MODULE *module, FILE *in, BOOLE *met)
{
  static char line[200000];
  CASE c;
  BOOLE ended = FALSE;
  memset (&c, 0, sizeof c);
  scriptLine = 0;
  line[0] = '\n';
  while (!ended) {
    if (beginsValue (line)) {
      const ENTRYDESCR *row = rowOf (module, line);
      char *text = wholeValue (in, line, sizeof line, &ended);
      closeCase (&c);
      if (row) {
        met[row - module->rows] = TRUE;
        openCase (&c, row, text);
      } else if (!isWithoutHome (text)) {
        fprintf (stderr, "%s:%d: no type of %s", script, scriptLine, text);
        failures++;
      }
      free (text);
      continue;
    }
    if (strchr ("=~+!?", *line) && c.encoding.octets)
      checkLine (&c, line);
    ended = fgets (line, sizeof line, in) == NULL;
    scriptLine++;
  }
  closeCase (&c);
}

static const MODULE *moduleOf (const char *path)
{
  const char *name = strrchr (path, '/') ? strrchr (path, '/') + 1 : path;
  for (int i = 0; i < nrOfModules; i++)
    if (strncmp (name, modules[i].name, strlen (modules[i].name)) == 0)
      return &modules[i];
  return NULL;
}

static int runFile (const char *path)
{
  const MODULE *module = moduleOf (path);
  FILE *in = fopen (path, "r");
  BOOLE *met;
  if (!module || !in) {
    fprintf (stderr, "%s is no script of a module\n", path);
    return 2;
  }
  script = path;
  met = calloc ((size_t)module->nrOfRows, sizeof *met);
  runScript (module, in, met);
  fclose (in);
  for (int row = 0; row < module->nrOfRows; row++)
    if (!met[row]) {
      fprintf (stderr, "%s: there is no value of %s\n", script, module->rows[row].name);
      failures++;
    }
  free (met);
  return 0;
}

static int runMessage (const char *type, const char *path)
{
  static BYTE_TYPE octets[100000];
  ENCODING e;
  FILE *in = fopen (path, "rb");
  script = path;
  e.octets = octets;
  e.length = in ? fread (octets, 1, sizeof octets, in) : 0;
  if (in)
    fclose (in);
  for (int i = 0; i < nrOfModules; i++) {
    const ENTRYDESCR *row = rowOf (&modules[i], type);
    if (row && e.length > 0) {
      expectKept (row, &e, &e);
      expectBeginningsRefused (row, &e);
      mutate (row, &e, 2000);
      return 0;
    }
  }
  fprintf (stderr, "%s is no file with a %s\n", path, type);
  return 2;
}

int main (int argc, char **argv)
{
  const char *type = NULL;
  int first = 1;
  if (argc > 3 && strcmp (argv[1], "-m") == 0)
    mutations = atoi (argv[2]);
  if (argc > 3 && strcmp (argv[1], "-w") == 0 && (encodings = fopen (argv[2], "wb")) != NULL)
    fwrite ("\x30\x80", 1, 2, encodings);
  if (argc > 3 && strcmp (argv[1], "-s") == 0)
    seeds = argv[2];
  if (argc > 3 && strcmp (argv[1], "-d") == 0)
    type = argv[2];
  starving = argc > 2 && strcmp (argv[1], "-f") == 0;
  if (starving)
    first = 2;
  if (mutations || encodings || seeds || type)
    first = 3;
  for (int i = first; i < argc; i++)
    if ((type ? runMessage (type, argv[i]) : runFile (argv[i])) != 0)
      return 2;
  if (encodings) {
    fwrite ("\0\0", 1, 2, encodings);
    fclose (encodings);
  }
  printf ("%d failures\n", failures);
  return failures != 0;
}
