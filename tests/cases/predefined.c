/* Rows lead to identifiers, to the entry types of both modules and to one another. */
#include "Near.tab"
#include "Far.def"
#include "Near.def"

static int isIdentifiedBy (const OBJECTIDENTIFIER *id, uint32 last)
{
  return id->n == 3 && id->arc[0] == 1 && id->arc[1] == 2 && id->arc[2] == last;
}

int main (void)
{
  ABSTRACT_SYNTAX *const *syntaxes = NearAPPLICATION_CONTEXT[0].AbstractSyntaxes;
  return !(NearHOLDER[0].bag == &NearBAG_TYPE[0] && NearHOLDER[0].Plain[0] == NULL &&
           isIdentifiedBy (&NearBAG_TYPE[0].id, 7) && NearBAG_TYPE[0].Type == &NearEntryDescr[NearNumber] &&
           isIdentifiedBy (&NearBags[1]->id, 9) && NearBags[1]->Type == &FarEntryDescr[FarText] &&
           isIdentifiedBy (&syntaxes[0]->id, 10) && syntaxes[0]->property == 0 &&
           isIdentifiedBy (&syntaxes[1]->id, 8) && syntaxes[1]->property == BIT(0) &&
           syntaxes[1]->Type == &FarEntryDescr[FarText] && syntaxes[2] == NULL);
}
