#include <stdio.h>
#include <string.h>
#include "user_tables.typ"
#include "user_tables.def"
#include "user_tablestab.ext"
#include "user_tablesown.h"

void putDigest(void) {}
void getDigest(void) {}
void getLimits(void) {}
int putLimits(const void *limits) { return ((const Limits *)limits)->percent; }

static int failures;
#define CHECK(what) ((what) ? (void)0 : (void)(++failures, printf("%s\n", #what)))

int main(void)
{
  Limits limits;
  ENTRYDESCR *row;
  memset(&limits, 0, sizeof limits);
  CHECK(!is_holes_Limits(&limits) && !is_word_Limits(&limits));
  set_word_Limits(&limits);
  set_amount_Limits(&limits);
  CHECK(is_word_Limits(&limits) && is_amount_Limits(&limits) && !is_holes_Limits(&limits));
  rem_word_Limits(&limits);
  CHECK(!is_word_Limits(&limits) && is_amount_Limits(&limits));
  CHECK(limits.compmask == BIT(amount_Limits));
  limits.percent = half;
  limits.light = stop;
  CHECK(limits.percent == 50 && limits.light == red_Light);
  CHECK(strcmp(product, "{1 2 840 113549 7}") == 0);

  CHECK(asnuser_tablesEntryDescr(user_tablesEntryDescr_cnt) == NULL);
  row = asnuser_tablesEntryDescr(user_tablesLimits);
  CHECK(row == user_tablesEntryDescr + user_tablesLimits && strcmp(row->name, "Limits") == 0);
  CHECK(row->type == TYP_SEQ && row->tag == TAG(TAG_UNI, TAG_PRI, 16));
  CHECK(row->size == sizeof limits && row->ask == NULL && row->print == NULL);
  CHECK(((int (*)(const void *))row->encode)(&limits) == 50);
  CHECK(user_tablesEntryDescr[user_tablesDigest].decode == getDigest);
  return failures;
}
