/* The tables of the example modules. */

#include "values.h"

#include "basic.tab"
#include "desk.tab"
#include "forms.tab"
#include "other.tab"
#include "shop.tab"
#include "stock.tab"
#include "value.tab"
#if !ASN_TABPARAM
#include "kept.tab"
#endif

#define ROWS(table) table, (int)(sizeof table / sizeof table[0])

const MODULE modules[] = {
  { "basic", ROWS (basicEntryDescr) }, { "desk", ROWS (deskEntryDescr) },
  { "forms", ROWS (formsEntryDescr) }, { "other", ROWS (otherEntryDescr) },
  { "shop", ROWS (shopEntryDescr) },   { "stock", ROWS (stockEntryDescr) },
  { "value", ROWS (valueEntryDescr) },
#if !ASN_TABPARAM
  { "kept", ROWS (keptEntryDescr) },
#endif
};
const int nrOfModules = sizeof modules / sizeof modules[0];
