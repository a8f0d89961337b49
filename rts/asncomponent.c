/* Asking for components: which of them are there, and the levels that they open. */

#include "asntest.h"

/* --- levels --- */

ASN_TEST_LEVEL *asnTopLevel (ASNTSTG *g)
{
  return g->depth > 0 ? &g->levels[g->depth - 1] : NULL;
}

static uint8 formOf (int mainType)
{
  switch (mainType) {
  case TYP_SEQ:
  case TYP_SET:
    return ASN_STRUCTURE_;
  case TYP_SEQOF:
  case TYP_SETOF:
    return ASN_LIST_;
  case TYP_CHOICE:
    return ASN_CHOICE_;
  default:
    return ASN_OTHER_;
  }
}

ASN_TEST_LEVEL *asnPushLevel (ASNTSTG *g, int mainType)
{
  ASN_TEST_LEVEL *level;
  if (g->depth == ASN_MAX_LEVELS) {
    asnRaise (&g->util, DEPTH_FAIL);
    return NULL;
  }
  level = &g->levels[g->depth++];
  memset (level, 0, sizeof *level);
  level->name = g->name;
  level->element = g->element;
  level->form = formOf (mainType);
  g->hasName = FALSE;
  return level;
}

void asnPopLevel (ASNTSTG *g)
{
  if (g->depth > 0)
    g->depth--;
  g->hasName = FALSE;
}

/* A structure or list need not have its brace, so that a person can answer by its first component. */
static void askLevel (ASNTSTG *g, int mainType)
{
  BOOLE hasBrace = formOf (mainType) <= ASN_LIST_ && asnPeekWord (g) == ASN_OPEN_;
  ASN_TEST_LEVEL *level = asnTestFailed (g) ? NULL : asnPushLevel (g, mainType);
  if (level && hasBrace) {
    asnTakeWord (g);
    level->opened = TRUE;
  }
}

void asnAskLevel (ASNTSTG *g)
{
  askLevel (g, TYP_SEQ);
}

/* --- extension markers --- */

void asnAskExtensionmarker (ASNTSTG *g, EXTENSIONMARKER *value)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  value->first = value->last = NULL;
  value->n = 0;
  if (level)
    level->marker = value;
}

/* ...: { '800105'H '8201FF'H }. A structure that keeps nothing unknown has no place for it. */
static void askUnknown (ASNTSTG *g)
{
  EXTENSIONMARKER *marker = g->depth > 0 ? asnTopLevel (g)->marker : NULL;
  g->name = "...";
  g->hasName = TRUE;
  if (!marker) {
    asnRaise (&g->util, INPUT_FAIL);
    return;
  }
  asnTakeWord (g);
  if (!asnExpectWord (g, ASN_OPEN_))
    return;
  while (asnPeekWord (g) == ASN_HEX_DIGITS_) {
    FRAME_PTR frame = asnFrameFromDigits (g);
    if (!frame) {
      asnRaise (&g->util, VALUE_FAIL);
      return;
    }
    if (marker->last)
      marker->last->next = frame;
    else
      marker->first = frame;
    marker->last = frame;
    marker->n++;
  }
  if (asnExpectWord (g, ASN_CLOSE_))
    g->hasName = FALSE;
}

/* The next word that belongs to a known component. */
static int peekKnown (ASNTSTG *g)
{
  while (asnPeekWord (g) == ASN_MARKER_ && !asnTestFailed (g))
    askUnknown (g);
  return asnTestFailed (g) ? ASN_END_ : g->word;
}

/* --- questions --- */

static BOOLE isNamed (const ASNTSTG *g, const char *name)
{
  return name && g->word == ASN_NAME_ && strcmp (g->text, name) == 0;
}

/* The name of the whole value may be left out. */
static BOOLE askHeader (ASNTSTG *g, const char *name)
{
  (void)asnPeekWord (g);
  if (isNamed (g, name))
    asnTakeWord (g);
  return TRUE;
}

/* What generated printing functions have no call for. */
static BOOLE isNeverPrinted (int mainType)
{
  return mainType == TYP_EMB_PDV || mainType == TYP_CHASTR || mainType == TYP_INSTANCE_OF ||
         mainType == TYP_UNISTR;
}

/* A component is there with its name, or if a value without name stands in its place. */
static BOOLE askComponent (ASNTSTG *g, const char *name, int status, int mainType)
{
  for (;;) {
    int word = peekKnown (g);
    if (asnTestFailed (g))
      return FALSE;
    g->name = name;
    g->hasName = TRUE;
    if (isNamed (g, name)) {
      asnTakeWord (g);
      return TRUE;
    }
    if (word != ASN_NAME_ && word != ASN_CLOSE_ && word != ASN_DASH_ && word != ASN_END_)
      return TRUE;
    if (status == TCS_OPTIONAL) {
      if (word == ASN_DASH_)
        asnTakeWord (g);
      return FALSE;
    }
    if (isNeverPrinted (mainType))
      return FALSE;
    if (!asnRefuseWord (g, MM_FAIL))
      return FALSE;
  }
}

static BOOLE askAlternative (ASNTSTG *g, const char *name)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  (void)asnPeekWord (g);
  if (!isNamed (g, name))
    return FALSE;
  asnTakeWord (g);
  if (level)
    level->begun++;
  return TRUE;
}

static BOOLE askElement (ASNTSTG *g)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  int word;
  if (!level)
    return FALSE;
  g->name = NULL;
  g->element = level->begun;
  word = asnPeekWord (g);
  if (word == ASN_CLOSE_)
    return FALSE;
  if (level->full)
    asnRaise (&g->util, AM_FAIL);
  /* An element that takes no word would be followed by others without end. */
  else if (word == ASN_END_ || (level->begun > 0 && level->taken == g->taken))
    asnRaise (&g->util, INPUT_FAIL);
  level->taken = g->taken;
  level->begun++;
  return !asnTestFailed (g);
}

int asnAskBegComp (ASNTSTG *g, const char *name, int status, int mainType)
{
  BOOLE isThere;
  if (asnTestFailed (g))
    return FALSE;
  g->name = name;
  g->hasName = status != TCS_CHOICE; /* it is not said yet which alternative it is */
  g->mainType = status == TCS_CHOICE ? TYP_CHOICE : mainType;
  g->status = status;
  if (status == TCS_HEADER)
    isThere = askHeader (g, name);
  else if (status == TCS_CHOICE)
    isThere = askAlternative (g, name);
  else if (status == TCS_MULTIPLE)
    isThere = askElement (g);
  else
    isThere = askComponent (g, name, status, mainType);
  if (!isThere || asnTestFailed (g))
    return FALSE;
  g->hasName = TRUE;
  g->mainType = mainType;
  if (asnHasLevel (mainType))
    askLevel (g, mainType);
  return !asnTestFailed (g);
}

void asnAskedAll (ASNTSTG *g)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (level)
    level->full = TRUE;
}

/* What stands where a structure should end is named in the error. */
static void endBraces (ASNTSTG *g, const ASN_TEST_LEVEL *level)
{
  int word = peekKnown (g);
  if (asnTestFailed (g))
    return;
  if (word == ASN_CLOSE_) {
    asnTakeWord (g);
    return;
  }
  if (word == ASN_NAME_) {
    g->name = g->text;
    g->hasName = TRUE;
  }
  asnRaise (&g->util, level->form == ASN_LIST_ && word != ASN_END_ ? AM_FAIL : INPUT_FAIL);
}

/* A list ends with a brace in any case. */
void asnAskEndComp (ASNTSTG *g)
{
  const ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (asnTestFailed (g) || !level)
    return;
  g->hasName = FALSE;
  if (level->opened || level->form == ASN_LIST_)
    endBraces (g, level);
  if (!asnTestFailed (g))
    asnPopLevel (g);
}

void asnAskEndAnyChoiceComp (ASNTSTG *g)
{
  const ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (asnTestFailed (g) || !level)
    return;
  if (level->form == ASN_CHOICE_ && level->begun == 0) {
    g->hasName = asnPeekWord (g) == ASN_NAME_ || g->word == ASN_MARKER_;
    g->name = g->text;
    asnRaise (&g->util, INPUT_FAIL);
  } else {
    asnPopLevel (g);
  }
}
