/* A value as JSON, from its encoding. */

#include "asntoolint.h"

/* Marks the closing character of an object or list that has a member. */
#define HAS_MEMBERS 0x80

static void startLine (ASN_JSON_WRITER *writer)
{
  if (writer->oneLine)
    return;
  asnAddChar (&writer->text, '\n');
  for (size_t i = 0; i < writer->open.length; i++)
    asnAddText (&writer->text, "  ");
}

/* In front of each member of an object or list. */
static void startMember (ASN_JSON_WRITER *writer)
{
  if (writer->open.length > 0 && !writer->hasName && !writer->open.failed) {
    char *last = &writer->open.text[writer->open.length - 1];
    if (*last & HAS_MEMBERS)
      asnAddText (&writer->text, writer->oneLine ? ", " : ",");
    *last = (char)(*last | HAS_MEMBERS);
    startLine (writer);
  }
  writer->hasName = FALSE;
}

static void open_ (ASN_JSON_WRITER *writer, const char *brackets)
{
  startMember (writer);
  asnAddChar (&writer->text, brackets[0]);
  asnAddChar (&writer->open, brackets[1]);
}

static void close_ (ASN_JSON_WRITER *writer)
{
  char last;
  if (writer->open.failed || writer->open.length == 0)
    return;
  last = writer->open.text[--writer->open.length];
  if (last & HAS_MEMBERS)
    startLine (writer);
  asnAddChar (&writer->text, (char)(last & ~HAS_MEMBERS));
}

static void addName (ASN_JSON_WRITER *writer, const char *name)
{
  startMember (writer);
  asnAddJsonString (&writer->text, name, strlen (name));
  asnAddText (&writer->text, ": ");
  writer->hasName = TRUE;
}

/* Unknown components are the members of one list. */
static void endForeign (ASN_JSON_WRITER *writer)
{
  if (writer->inForeign)
    close_ (writer);
  writer->inForeign = FALSE;
}

static void tellName (ASN_WALK *w, const ASNTOOLPLACE *place, uint32 element)
{
  ASN_JSON_WRITER *writer = (ASN_JSON_WRITER *)w->own;
  (void)element;
  endForeign (writer);
  if (place->name && w->nrOfSteps > 1)
    addName (writer, place->name);
}

static BOOLE isList (const ASNTOOLTYPE *type)
{
  return type->kind == TYP_SEQOF || type->kind == TYP_SETOF;
}

static void tellOpen (ASN_WALK *w, const ASNTOOLTYPE *type)
{
  open_ ((ASN_JSON_WRITER *)w->own, isList (type) ? "[]" : "{}");
}

static void tellClose (ASN_WALK *w, const ASNTOOLTYPE *type)
{
  ASN_JSON_WRITER *writer = (ASN_JSON_WRITER *)w->own;
  (void)type;
  endForeign (writer);
  close_ (writer);
}

static int tellLeaf (ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length, uint32 unused)
{
  ASN_JSON_WRITER *writer = (ASN_JSON_WRITER *)w->own;
  startMember (writer);
  return asnAddJsonLeaf (&writer->text, type, p, length, unused);
}

static void tellWhole (ASN_WALK *w, const BYTE_TYPE *p, size_t length, BOOLE isKnown)
{
  ASN_JSON_WRITER *writer = (ASN_JSON_WRITER *)w->own;
  if (!isKnown && !writer->inForeign) {
    addName (writer, "...");
    open_ (writer, "[]");
    writer->inForeign = TRUE;
  }
  startMember (writer);
  asnAddChar (&writer->text, '"');
  asnAddHex (&writer->text, p, length);
  asnAddChar (&writer->text, '"');
}

const ASN_VISITOR asnJsonVisitor = { TRUE, FALSE, tellName, NULL, NULL, tellOpen, tellClose, tellLeaf, tellWhole };

BOOLE asnWriteJson (ASN_JSON_WRITER *writer, ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p,
                    size_t length)
{
  BOOLE done;
  writer->hasName = writer->inForeign = FALSE;
  asnEmpty (&writer->open);
  done = asnWalk (w, &asnJsonVisitor, writer, place, p, length);
  if (done && (writer->text.failed || writer->open.failed)) {
    w->error.code = LACK_OF_MEMORY;
    return FALSE;
  }
  return done;
}
