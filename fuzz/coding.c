/* Generated code for all types of the examples: the first octet of an input chooses the type, what follows
   is an encoding for its decoder, or a text for its asking function (FUZZ_TEXTS). What is accepted must
   be a value: it can be printed, encoded and decoded again. */

#include "tests/roundtrip/values.h"

#include <stdlib.h>

int LLVMFuzzerTestOneInput (const BYTE_TYPE *data, size_t size);

int LLVMFuzzerTestOneInput (const BYTE_TYPE *data, size_t size)
{
  const ENTRYDESCR *row = size ? rowNumbered (data[0]) : NULL;
  if (!row)
    return 0;
  script = "input";
#if FUZZ_TEXTS
  char *text = malloc (size);
  memcpy (text, data + 1, size - 1);
  text[size - 1] = 0;
  checkText (row, text);
  free (text);
#else
  checkEncoding (row, data + 1, size - 1);
#endif
  if (failures)
    abort ();
  return 0;
}
