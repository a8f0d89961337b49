/* An order of the shop goes to the warehouse: it is encoded, decoded and printed by code that velmo
   generates of shop.asn and stock.asn, through the interface of the run-time layer. */

#include "asnapi.h"
#include "shop.def"
#include "shopcod.ext"
#include "shoptst.ext"
#include "stock.def"

#include <stdio.h>
#include <string.h>

static void tell (const char *what, const ASNERROR *error)
{
  printf ("%s: %s at octet %lu\n", what, asnErrorName (error->code), (unsigned long)error->offset);
}

static void fillAddress (Address *address, const char *street, const char *town)
{
  address->street.n = (uint8)strlen (street);
  strcpy (address->street.st, street);
  address->town.n = (uint8)strlen (town);
  strcpy (address->town.st, town);
}

/* Mandatory components need no more than a value; an optional one is there once set_... says so. */
static void fillOrder (Order *order)
{
  static const uint8 wireNumber[] = { 0, 0, 0, 1, 0xE2, 0x40 };
  Line *line = &order->lines.elem[0];
  memset (order, 0, sizeof *order);
  order->number = 5;
  fillAddress (&order->ship_to, "North End 4", "Bath");
  strcpy (order->ship_to.country.st, "GB");
  set_country_Address (&order->ship_to);
  order->lines.n = 1;
  memcpy (line->article.number.st, wireNumber, sizeof wireNumber);
  strcpy (line->article.description.st, "copper wire");
  line->article.description.n = (uint8)strlen (line->article.description.st);
  set_description_Article (&line->article);
  line->amount = 250;
  line->unit = metre_Unit;
  set_unit_Line (line);
  order->state.value = packed_State;
  set_state_Order (order);
}

/* What the warehouse does with octets; `memory` takes what an order doesn't hold itself, here components
   of newer versions of its type. */
static void receive (const BYTE_TYPE *octets, size_t length)
{
  Order order;
  ASNMEM memory = { 0 };
  ASNERROR error;
  if (!asnDecode (decOrder, octets, length, &order, sizeof order, &memory, NULL, &error))
    tell ("not an order", &error);
  else if (!asnPrint (priOrder, &order, stdout, &error))
    tell ("not printed", &error);
  asnFreeMemory (&memory);
}

int main (void)
{
  Order order;
  BYTE_TYPE buffer[200], *start;
  size_t length;
  ASNERROR error;

  fillOrder (&order);
  start = asnEncode (encOrder, &order, buffer, sizeof buffer, &length, &error);
  if (!start) {
    tell ("not encoded", &error);
    return 1;
  }
  printf ("-- %lu octets, beginning with %02X %02X\n", (unsigned long)length, start[0], start[1]);
  receive (start, length);

  printf ("-- the same without its last octet\n");
  receive (start, length - 1);

  printf ("-- an order for more than the warehouse keeps\n");
  order.lines.elem[0].amount = 20000;
  start = asnEncode (encOrder, &order, buffer, sizeof buffer, &length, &error);
  receive (start, length);
  return 0;
}
