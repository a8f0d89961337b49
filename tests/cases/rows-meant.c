#include "RowsMeant.tab"

int main (void)
{
  return RowsMeantROW[0].far->id != 2 || RowsMeantROW[0].own->n != 2 ||
         RowsMeantROW[0].octets.n != 2 || RowsMeantROW[0].octets.st[1] != 255 ||
         RowsMeantROW[0].Picks[0].choice != 1 || RowsMeantROW[0].Picks[0].i1.b != 5 ||
         RowsMeantLOST[0].op != NULL;
}
