/* Entry types: which there are, and which one a name or a message means. */

#include "asntoolrun.h"

BOOLE asnNextEntry (const ASNTOOLMODULE *modules, ASN_ENTRY *entry)
{
  if (!entry->module) {
    entry->module = modules;
    entry->number = 0;
  } else {
    entry->number++;
  }
  while (entry->module->name && entry->number >= entry->module->nrOfEntries) {
    entry->module++;
    entry->number = 0;
  }
  return entry->module->name != NULL;
}

/* --- by name --- */

BOOLE asnHasName (ASN_ENTRY entry, const char *name)
{
  const size_t length = strlen (entry.module->name);
  return strcmp (asnRow (entry)->name, name) == 0 ||
         (strncmp (entry.module->name, name, length) == 0 && name[length] == '.' &&
          strcmp (asnRow (entry)->name, name + length + 1) == 0);
}

/* Whether names differ in one character, or in capitals. */
static BOOLE isNear (const char *a, const char *b)
{
  uint32 differences = 0;
  while (*a || *b) {
    const BOOLE sameLetter = *a && *b && (*a | 0x20) == (*b | 0x20);
    if (*a != *b && !sameLetter && ++differences > 1)
      return FALSE;
    if (*a == *b || sameLetter || strlen (a) == strlen (b)) {
      a++;
      b++;
    } else if (strlen (a) > strlen (b)) {
      a++;
    } else {
      b++;
    }
  }
  return TRUE;
}

static void reportUnknown (const ASN_TOOL *tool, const char *name)
{
  ASN_ENTRY entry = { NULL, 0 };
  (void)fprintf (stderr, "%s: there is no type \"%s\"", tool->program, name);
  while (asnNextEntry (tool->modules, &entry))
    if (isNear (asnRow (entry)->name, name)) {
      (void)fprintf (stderr, "; did you mean %s?\n", asnRow (entry)->name);
      return;
    }
  (void)fprintf (stderr, "; \"list --all\" shows all\n");
}

BOOLE asnFindEntry (ASN_TOOL *tool, const char *name)
{
  ASN_ENTRY entry = { NULL, 0 }, found = { NULL, 0 };
  while (asnNextEntry (tool->modules, &entry)) {
    if (!asnHasName (entry, name))
      continue;
    if (found.module) {
      (void)fprintf (stderr, "%s: several modules have a type \"%s\": say %s.%s or %s.%s\n", tool->program, name,
                     found.module->name, name, entry.module->name, name);
      return FALSE;
    }
    found = entry;
  }
  if (!found.module)
    reportUnknown (tool, name);
  tool->entry = found;
  return found.module != NULL;
}

/* --- by a message --- */

enum { NOT_AT_ALL, AS_ANYTHING, BY_TAG };

/* Whether a value may begin with the tag, and if only because any tag may stand there. */
static int mayBegin (const ASNTOOLPLACE *place, uint32 tag, uint32 depth)
{
  int best = NOT_AT_ALL;
  if (asnIsMarker (place) || depth > ASN_MAX_NESTING)
    return NOT_AT_ALL;
  if (*place->tags)
    return *place->tags == tag ? BY_TAG : NOT_AT_ALL;
  if (place->type->kind != TYP_CHOICE)
    return AS_ANYTHING;
  for (uint32 i = 0; i < place->type->nrOfPlaces && best < BY_TAG; i++) {
    const int way = mayBegin (&place->type->places[i], tag, depth + 1);
    best = way > best ? way : best;
  }
  return best;
}

static int mayBeEntry (ASN_ENTRY entry, uint32 tag)
{
  const ASNTOOLPLACE *place = asnEntryPlace (entry);
  if (!asnIsListed (entry))
    return NOT_AT_ALL;
  if (place)
    return mayBegin (place, tag, 0);
  return asnRow (entry)->tag == tag ? BY_TAG : asnRow (entry)->tag == TAG_CHOICE ? AS_ANYTHING : NOT_AT_ALL;
}

static BOOLE takeTrial (ASN_TOOL *tool, ASN_ENTRY entry, const BYTE_TYPE *p, size_t length)
{
  tool->entry = entry;
  return asnTakeTrial (tool, p, length);
}

BOOLE asnOnlyEntry (ASN_TOOL *tool)
{
  ASN_ENTRY entry = { NULL, 0 }, found = { NULL, 0 };
  while (asnNextEntry (tool->modules, &entry)) {
    if (!asnIsListed (entry))
      continue;
    if (found.module)
      return FALSE;
    found = entry;
  }
  tool->entry = found;
  return found.module != NULL;
}

/* The tag alone, whatever is wrong with the length behind it. */
static BOOLE readTag (const BYTE_TYPE *p, size_t length, uint32 *tag)
{
  BYTE_TYPE octets[8];
  ASN_HEADER header;
  size_t n = 0;
  do {
    if (n == length || n + 1 == sizeof octets)
      return FALSE;
    octets[n] = p[n];
    n++;
  } while (n == 1 ? (octets[0] & 0x1F) == ASN_LONG_NUMBER : (octets[n - 1] & 0x80) != 0);
  octets[n] = 0;
  if (asnReadHeader (octets, octets + n + 1, &header) != ASN_OK)
    return FALSE;
  *tag = header.tag;
  return TRUE;
}

BOOLE asnChooseEntry (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  ASN_ENTRY entry = { NULL, 0 }, likely = { NULL, 0 }, found = { NULL, 0 };
  const ASN_ENTRY before = tool->entry;
  uint32 nrOfLikely = 0, tag = EOC_TAG;
  int best = AS_ANYTHING;
  if (asnOnlyEntry (tool))
    return TRUE;
  while (readTag (p, length, &tag) && asnNextEntry (tool->modules, &entry)) {
    const int way = mayBeEntry (entry, tag);
    nrOfLikely = way > best ? 0 : nrOfLikely;
    best = way > best ? way : best;
    nrOfLikely += way == best;
    likely = way == best ? entry : likely;
  }
  tool->entry = likely;
  if (nrOfLikely == 1)
    return TRUE;
  if (before.module && nrOfLikely > 1 && takeTrial (tool, before, p, length))
    return TRUE;
  entry.module = NULL;
  while (nrOfLikely > 1 && asnNextEntry (tool->modules, &entry)) {
    if (mayBeEntry (entry, tag) < best || !takeTrial (tool, entry, p, length))
      continue;
    if (found.module) {
      (void)fprintf (asnStartReport (tool), "several types fit, %s and %s among them: name one\n",
                     asnRow (found)->name, asnRow (entry)->name);
      tool->hasWrongUsage = TRUE;
      return FALSE;
    }
    found = entry;
  }
  tool->entry = found;
  if (!found.module)
    (void)fprintf (asnStartReport (tool), "no type that \"list\" shows fits: name one\n");
  return found.module != NULL;
}

/* --- the list --- */

/* "[0] ... [2]" for what can stand first. */
static void addFirstTags (ASN_GROWING *to, const ASNTOOLPLACE *place, uint32 *told, uint32 depth)
{
  enum { MOST = 6 };
  if (asnIsMarker (place) || *told > MOST || depth > ASN_MAX_NESTING)
    return;
  if (!*place->tags && place->type->kind == TYP_CHOICE) {
    for (uint32 i = 0; i < place->type->nrOfPlaces; i++)
      addFirstTags (to, &place->type->places[i], told, depth + 1);
    return;
  }
  asnAddText (to, *told > 0 ? ", " : "");
  if (++*told > MOST)
    asnAddText (to, "...");
  else if (*place->tags)
    asnAddTag (to, *place->tags);
  else
    asnAddText (to, "any tag");
}

static void listEntry (ASN_TOOL *tool, ASN_ENTRY entry, int width)
{
  const ASNTOOLPLACE *place = asnEntryPlace (entry);
  uint32 told = 0;
  asnEmpty (&tool->text);
  if (place)
    addFirstTags (&tool->text, place, &told, 0);
  else if (asnRow (entry)->tag == TAG_CHOICE)
    asnAddText (&tool->text, "any of several tags");
  else
    asnAddTag (&tool->text, asnRow (entry)->tag);
  if (tool->text.failed) {
    (void)fprintf (stderr, "%s: there is not enough memory\n", tool->program);
    tool->nrOfBad++;
    return;
  }
  (void)printf ("  %-*s  %-17s  %s\n", width, asnRow (entry)->name,
                asnKindName (place ? place->type->kind : asnRow (entry)->type),
                tool->text.text ? tool->text.text : "");
}

static BOOLE isShown (const ASN_TOOL *tool, ASN_ENTRY entry)
{
  return tool->all || asnIsListed (entry);
}

void asnListEntries (ASN_TOOL *tool)
{
  ASN_ENTRY entry = { NULL, 0 };
  const ASNTOOLMODULE *module = NULL;
  int width = 0;
  while (asnNextEntry (tool->modules, &entry))
    if (isShown (tool, entry) && (int)strlen (asnRow (entry)->name) > width)
      width = (int)strlen (asnRow (entry)->name);
  entry.module = NULL;
  while (asnNextEntry (tool->modules, &entry)) {
    if (!isShown (tool, entry))
      continue;
    if (module != entry.module)
      (void)printf ("%s\n", entry.module->name);
    module = entry.module;
    listEntry (tool, entry, width);
  }
}
