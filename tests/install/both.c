/* Prints how wide an amount is held, and what is encoded of a message of each protocol. */
#include "orders_asn1.h"
#include "the-bills_asn1.h"
#include <stdio.h>

static void print (ENTRYFUNC encode, const void *value)
{
  BYTE_TYPE buffer[100];
  size_t length;
  ASNERROR error;
  const BYTE_TYPE *at = asnEncode (encode, value, buffer, sizeof buffer, &length, &error);
  for (; at && length > 0; length--)
    printf ("%02x", *at++);
  printf ("\n");
}

int main (void)
{
  o_Message order = { 0 };
  b_Message bill = { 0 };
  ASNERROR error;
  order.amount = 5;
  set_amount_b_Message (&bill);
  *alt_amount_b_Message (&bill) = 6;
  printf ("%d\n", (int)sizeof (o_Amount));
  print ((ENTRYFUNC)enco_Message, &order);
  print (b_billsEntryDescr[b_billsb_Message].encode, &bill);
  asnPrint (prio_Message, &order, stdout, &error);
  return 0;
}
