/* Looks operations of the desk of a library up by their code, in the tables that were generated from
   operations.asn, and calls the entry functions that a row names:

     lookup             lists the operations
     lookup CODE        tells what the row of one operation holds
     lookup CODE HEX    decodes an argument, and encodes it again

   The program knows no operation by name: what it can do grows with the module. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "asnapi.h"
#include "desktab.ext"
#include "desk.def"

static OPERATION *findOperation (long code)
{
  OPERATION_iter op;
  for (op = firstDeskOPERATIONObj (); op != NULL; op = nextDeskOPERATIONObj (op))
    if (op->code == code)
      return op;
  return NULL;
}

static const char *typeName (const ENTRYDESCR *type)
{
  return type == NULL ? "nothing" : type->name;
}

/* Whether an operation is in a set; sets end with a null. */
static int isIn (OPERATION *const *set, OPERATION *op)
{
  while (*set != NULL && *set != op)
    ++set;
  return *set != NULL;
}

static void listOperations (void)
{
  OPERATION_iter op;
  for (op = firstDeskOPERATIONObj (); op != NULL; op = nextDeskOPERATIONObj (op))
    printf ("%d: %s -> %s%s\n", op->code, typeName (op->Argument), typeName (op->Result),
            isIn (deskReaderOperations, op) ? ", for readers" : "");
}

static void showOperation (OPERATION *op)
{
  int i;
  printf ("operation %d: %s -> %s\n", op->code, typeName (op->Argument), typeName (op->Result));
  if (is_Errors_OPERATION (op)) {
    ERROR *const *error;
    for (error = op->Errors; *error != NULL; ++error)
      printf ("  error %d, %s: %s%s\n", (*error)->code, typeName ((*error)->Detail),
              (*error)->text.st, (*error)->again ? " (try again)" : "");
  }
  if (is_Hours_OPERATION (op)) {
    printf ("  served at");
    for (i = 0; i < op->Hours.n; ++i)
      printf (" %d", op->Hours.elem[i]);
    printf ("\n");
  }
  if (op->undo != NULL)
    printf ("  undone by operation %d\n", op->undo->code);
}

/* Octets of "30 0a" or "300a"; the result is their number, or -1. */
static long readHex (const char *text, BYTE_TYPE *octets, size_t size)
{
  size_t length = 0;
  unsigned octet;
  int used;
  for (; *text != '\0'; text += used) {
    if (length == size || sscanf (text, " %2x%n", &octet, &used) != 1)
      return -1;
    octets[length++] = (BYTE_TYPE)octet;
  }
  return (long)length;
}

static int handleArgument (OPERATION *op, const char *hex)
{
  BYTE_TYPE octets[256];
  BYTE_TYPE again[256];
  long length = readHex (hex, octets, sizeof octets);
  const ENTRYDESCR *type = op->Argument;
  ASNMEM memory = {0};
  ASNERROR error;
  BYTE_TYPE *start;
  size_t encoded, i;
  void *value;
  if (type == NULL || length < 0) {
    fputs (type == NULL ? "no argument expected\n" : "not hexadecimal\n", stderr);
    return 1;
  }
  value = calloc (1, type->size);
  if (value == NULL)
    return 1;
  if (!asnDecode (type->decode, octets, (size_t)length, value, type->size, &memory, NULL,
                  &error)) {
    printf ("no %s: %s\n", type->name, asnErrorName (error.code));
  } else {
    start = asnEncode (type->encode, value, again, sizeof again, &encoded, &error);
    if (start != NULL) {
      printf ("%s of %lu octets:", type->name, (unsigned long)type->size);
      for (i = 0; i < encoded; ++i)
        printf (" %02X", start[i]);
      printf ("\n");
    }
  }
  asnFreeMemory (&memory);
  free (value);
  return error.code != ASN_OK;
}

int main (int argc, char **argv)
{
  OPERATION *op;
  if (argc < 2) {
    listOperations ();
    return 0;
  }
  op = findOperation (strtol (argv[1], NULL, 10));
  if (op == NULL) {
    fprintf (stderr, "no operation %s\n", argv[1]);
    return 1;
  }
  if (argc > 2)
    return handleArgument (op, argv[2]);
  showOperation (op);
  return 0;
}
