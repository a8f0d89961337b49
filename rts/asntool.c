/* The main part of a message program: its command line. */

#include "asntoolrun.h"

#include <stdlib.h>

/* --- words of the command line --- */

typedef struct {
  const char *word;
  int number;
} WORD;

static const WORD commands[] = {
  { "list", COMMAND_LIST },       { "decode", COMMAND_DECODE }, { "encode", COMMAND_ENCODE },
  { "convert", COMMAND_CONVERT }, { "check", COMMAND_CHECK },   { NULL, 0 },
};
static const WORD formats[] = {
  { "binary", FORMAT_BINARY }, { "hex", FORMAT_HEX },   { "base64", FORMAT_BASE64 }, { "pem", FORMAT_PEM },
  { "text", FORMAT_TEXT },     { "json", FORMAT_JSON }, { "tlv", FORMAT_TAGS },      { NULL, 0 },
};

static BOOLE findWord (const WORD *words, const char *word, int *number)
{
  for (; words->word; words++)
    if (strcmp (words->word, word) == 0) {
      *number = words->number;
      return TRUE;
    }
  return FALSE;
}

static const char usage[] =
  "Usage:\n"
  "\n"
  "  %s list [--all]\n"
  "  %s decode  [TYPE] [FILE ...]\n"
  "  %s encode  [TYPE] [FILE ...]\n"
  "  %s convert [TYPE] [FILE ...]\n"
  "  %s check   [TYPE] [FILE ...]\n"
  "\n"
  "  list       the entry types and their tags; --all: all types that can be coded\n"
  "  decode     prints messages: as text, with --json as JSON, with --tlv as a list of their tags\n"
  "  encode     makes messages from text, as decode prints it, or from JSON\n"
  "  convert    from any form to any other\n"
  "  check      decodes, encodes again and compares; tells what is wrong and where\n"
  "\n"
  "TYPE is a type or Module.Type; left out, it is the entry type that fits. Without FILE, and for \"-\",\n"
  "the standard input is read. A file may hold several messages, one behind the other.\n"
  "\n"
  "  --in=FORM  of the files: binary, hex, base64, pem, text or json; told apart without it\n"
  "  --out=FORM of the output: these or tlv\n"
  "  --json, --tlv\n"
  "             short for --out=json and --out=tlv\n"
  "  --der      definite lengths in the fewest octets, SETs in order\n"
  "  --quiet    check says nothing of good files\n"
  "  --help, --version\n"
  "\n"
  "The status is 0 if all messages are good, 1 if some are not, 2 for a wrong command line.\n";

static int complain (const ASN_TOOL *tool, const char *text, const char *word)
{
  (void)fprintf (stderr, "%s: %s%s%s%s; %s --help tells more\n", tool->program, text, word ? " \"" : "",
                 word ? word : "", word ? "\"" : "", tool->program);
  return STATUS_USAGE;
}

enum { GO_ON = -1 };

static int takeOption (ASN_TOOL *tool, const char *option)
{
  static const struct {
    const char *name;
    size_t place;
  } flags[] = { { "--der", offsetof (ASN_TOOL, der) },
                { "--all", offsetof (ASN_TOOL, all) },
                { "--quiet", offsetof (ASN_TOOL, quiet) } };
  for (size_t i = 0; i < sizeof flags / sizeof *flags; i++)
    if (strcmp (option, flags[i].name) == 0) {
      *((BOOLE *)tool + flags[i].place) = TRUE;
      return GO_ON;
    }
  if (strncmp (option, "--in=", 5) == 0)
    return findWord (formats, option + 5, &tool->in) && tool->in != FORMAT_TAGS ? GO_ON
                                                     : complain (tool, "not a form of input:", option + 5);
  if (strncmp (option, "--out=", 6) == 0)
    return findWord (formats, option + 6, &tool->out) ? GO_ON : complain (tool, "not a form of output:", option + 6);
  if (strcmp (option, "--json") == 0 || strcmp (option, "--tlv") == 0) {
    (void)findWord (formats, option + 2, &tool->out);
    return GO_ON;
  }
  return complain (tool, "unknown option:", option);
}

static void printUsage (const ASN_TOOL *tool)
{
  (void)printf (usage, tool->program, tool->program, tool->program, tool->program, tool->program);
}

static void printVersion (const ASN_TOOL *tool)
{
  (void)printf ("%s 1.7, modules", tool->program);
  for (const ASNTOOLMODULE *module = tool->modules; module->name; module++)
    (void)printf ("%s %s", module == tool->modules ? "" : ",", module->name);
  (void)printf ("\n");
}

/* --- TYPE or FILE --- */

/* The first word is a type, unless it is a file and no type. */
static int takeType (ASN_TOOL *tool)
{
  ASN_ENTRY entry = { NULL, 0 };
  const char *word = tool->nrOfFiles > 0 ? tool->files[0] : NULL;
  BOOLE isType = FALSE;
  if (!word)
    return GO_ON;
  while (!isType && asnNextEntry (tool->modules, &entry))
    isType = asnHasName (entry, word);
  if (!isType && asnIsFile (word))
    return GO_ON;
  if (!asnFindEntry (tool, word))
    return STATUS_USAGE;
  tool->typeName = word;
  tool->files++;
  tool->nrOfFiles--;
  return GO_ON;
}

static int checkOptions (ASN_TOOL *tool)
{
  const BOOLE makesOctets = tool->command == COMMAND_ENCODE ||
                            (tool->command == COMMAND_CONVERT && (tool->in == FORMAT_TEXT || tool->in == FORMAT_JSON));
  if (tool->out == FORMAT_UNKNOWN)
    tool->out = makesOctets ? FORMAT_BINARY : FORMAT_TEXT;
  for (const ASNTOOLMODULE *module = tool->modules; module->name; module++)
    if (!module->places && (tool->der || tool->in == FORMAT_JSON || tool->out == FORMAT_JSON))
      return complain (tool, "without the tables of velmo-tool there is no JSON and no --der", NULL);
  return GO_ON;
}

/* Words that are no options, in the order in which they stand, become the files. */
static int parseCommandLine (ASN_TOOL *tool, int argc, char **argv)
{
  int words = 0, status = GO_ON;
  BOOLE behind = FALSE;
  for (int i = 1; i < argc && status == GO_ON; i++) {
    if (!behind && strcmp (argv[i], "--help") == 0) {
      printUsage (tool);
      return STATUS_GOOD;
    }
    if (!behind && strcmp (argv[i], "--version") == 0) {
      printVersion (tool);
      return STATUS_GOOD;
    }
    if (!behind && strcmp (argv[i], "--") == 0)
      behind = TRUE;
    else if (!behind && argv[i][0] == '-' && argv[i][1])
      status = takeOption (tool, argv[i]);
    else
      tool->files[words++] = argv[i];
  }
  if (status != GO_ON)
    return status;
  if (words == 0)
    return complain (tool, "no command is given", NULL);
  if (!findWord (commands, tool->files[0], &tool->command))
    return complain (tool, "unknown command:", tool->files[0]);
  tool->files++;
  tool->nrOfFiles = words - 1;
  if (tool->command == COMMAND_LIST)
    return words > 1 ? complain (tool, "\"list\" takes no words:", tool->files[0]) : GO_ON;
  status = checkOptions (tool);
  return status == GO_ON ? takeType (tool) : status;
}

/* --- the run --- */

static void checkFile (ASN_TOOL *tool, const char *name)
{
  const unsigned long messages = tool->nrOfMessages, bad = tool->nrOfBad;
  tool->bytesOfFile = asnSizeOfFile (name);
  asnRunFile (tool, name);
  tool->bytesBefore += tool->bytesOfFile;
  if (tool->nrOfBad == bad && tool->quiet)
    return;
  asnHideProgress (tool);
  if (tool->nrOfMessages > messages && tool->nrOfBad > bad)
    (void)printf ("%s: %lu of %lu messages bad\n", name, tool->nrOfBad - bad, tool->nrOfMessages - messages);
  else if (tool->nrOfMessages > messages)
    (void)printf ("%s: good, %lu message%s\n", name, tool->nrOfMessages - messages,
                  tool->nrOfMessages == messages + 1 ? "" : "s");
}

static void runFiles (ASN_TOOL *tool)
{
  static char standardInput[] = "-";
  if (tool->nrOfFiles == 0) {
    tool->nrOfFiles = 1;
    tool->files[0] = standardInput; /* there is always room for one */
  }
  if (tool->command == COMMAND_CHECK)
    asnStartProgress (tool);
  for (int i = 0; i < tool->nrOfFiles && !tool->hasWrongUsage; i++) {
    if (tool->command == COMMAND_CHECK)
      checkFile (tool, tool->files[i]);
    else
      asnRunFile (tool, tool->files[i]);
  }
  if (tool->command == COMMAND_CHECK)
    asnReportRun (tool);
}

static void cleanUp (ASN_TOOL *tool)
{
  asnFreeMemory (&tool->memory);
  free (tool->value);
  asnDrop (&tool->raw);
  asnDrop (&tool->octets);
  asnDrop (&tool->text);
  asnDrop (&tool->other);
}

int asnToolMainWith (int reentrant, int argc, char **argv, const ASNTOOLMODULE *modules)
{
  const char *slash = argc > 0 ? strrchr (argv[0], '/') : NULL;
  char **words = (char **)calloc ((size_t)argc + 2, sizeof *words);
  ASN_TOOL tool;
  int status;
  memset (&tool, 0, sizeof tool);
  tool.program = slash ? slash + 1 : argc > 0 ? argv[0] : "tool";
  tool.modules = modules;
  tool.reentrant = reentrant;
  tool.files = words;
  if (!words) {
    (void)fprintf (stderr, "%s: there is not enough memory\n", tool.program);
    return STATUS_BAD;
  }
  status = parseCommandLine (&tool, argc, argv);
  if (status == GO_ON) {
    if (tool.command == COMMAND_LIST)
      asnListEntries (&tool);
    else
      runFiles (&tool);
    status = tool.hasWrongUsage ? STATUS_USAGE : tool.nrOfBad > 0 || tool.nrOfBadFiles > 0 ? STATUS_BAD : STATUS_GOOD;
  }
  if (fflush (stdout) != 0 || ferror (stdout)) {
    (void)fprintf (stderr, "%s: the output can't be written\n", tool.program);
    status = status == STATUS_GOOD ? STATUS_BAD : status;
  }
  cleanUp (&tool);
  free (words);
  return status;
}
