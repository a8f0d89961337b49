/* Values go through all functions and come back the same. */
#include "3-rarecod.ext"
#include "3-raretst.ext"
#include "3-raretab.ext"
#include "3-rare.def"
#include "asnapi.h"
#include <string.h>

/* Asks for a value, then prints what is decoded from its encoding; tells of an error. */
static void show (ENTRYFUNC ask, ENTRYFUNC encode, ENTRYFUNC decode, ENTRYFUNC print, size_t size,
                  const char *text)
{
  ASNHOME *value[20]; /* room for any of them */
  ASNMEM memory = { 0 };
  ASNERROR error;
  BYTE_TYPE buffer[200], *start = NULL;
  size_t length = 0;
  FILE *script = tmpfile ();
  fputs (text, script);
  rewind (script);
  if (!asnAsk (ask, value, size, &memory, script, NULL, &error) ||
      !(start = asnEncode (encode, value, buffer, sizeof buffer, &length, &error)) ||
      !asnDecode (decode, start, length, value, size, &memory, NULL, &error) ||
      !asnPrint (print, value, stdout, &error))
    printf ("%s at %s\n", asnErrorName (error.code), error.path);
  for (size_t i = 0; start && i < length; i++)
    printf ("%02X", start[i]);
  putchar ('\n');
  asnFreeMemory (&memory);
  fclose (script);
}

#define SHOW(type, text) \
  show ((ENTRYFUNC)ask##type, (ENTRYFUNC)enc##type, (ENTRYFUNC)dec##type, (ENTRYFUNC)pri##type, \
        sizeof (type), text)

/* What a decoder had to skip is missing from no message in silence. */
static void passOn (const char *encoding, size_t length)
{
  Part part;
  ASNMEM memory = { 0 };
  ASNERROR error;
  BYTE_TYPE buffer[20];
  if (asnDecode ((ENTRYFUNC)decPart, encoding, length, &part, sizeof part, &memory, NULL, &error) &&
      asnEncode ((ENTRYFUNC)encPart, &part, buffer, sizeof buffer, &length, &error))
    printf ("%zu octets\n", length);
  else
    printf ("%s\n", asnErrorName (error.code));
  asnFreeMemory (&memory);
}

int main (void)
{
  SHOW (Wide, "{ short: \"a\\U0001F600\" far: \"\" list: { \"x\" \"\\U0010FFFF\" } "
              "about: \"it\" mark: \"abc\" }");
  SHOW (Wide, "{ short: \"\\u20AC\" fixed: \"yz\" far: \"q\" list: { } about: \"\" mark: \"abc\" }");
  SHOW (Wide, "{ short: \"x\" fixed: \"y\" far: \"q\" list: { } about: \"\" mark: \"abc\" }");
  SHOW (Homes, "{ huge: 7 numbers: { 1 255 } pairs: { { a: TRUE } { a: FALSE b: -3 } } number: 1.5 }");
  SHOW (Edge, "lowest");
  passOn ("\x30\x05\xA0\x03\x80\x01\xFF", 7);
  passOn ("\x30\x05\xA0\x03\x81\x01\xFF", 7);
  return strcmp (odd, "?" "?(") || *alt_number_choice_KIND (&_3_rarekind->choice) != 0 ||
         _3_rarekind->Type != &_3_rareEntryDescr[_3_rareWide];
}
