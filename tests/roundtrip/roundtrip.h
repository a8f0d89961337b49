/* The entry tables of the example modules, as programs go through them. Behind the table files. */

#ifndef ROUNDTRIP_H
#define ROUNDTRIP_H

typedef struct {
  const char *name;
  const ENTRYDESCR *rows;
  int nrOfRows;
} MODULE;

/* The bytes of a value; an application that keeps components in homes has a table of pointers. */
static inline size_t sizeOfValue (const ENTRYDESCR *row)
{
#if ASN_TABPARAM
  return row->components * sizeof (ASNHOME *);
#else
  return row->size;
#endif
}

/* Whether a script's value is of a type that such an application has no functions for. */
static inline int isWithoutHome (const char *text)
{
#if ASN_TABPARAM
  return strncmp (text, "Big-Count:", 10) == 0 || strncmp (text, "Framed:", 7) == 0;
#else
  (void)text;
  return 0;
#endif
}

#endif /*ROUNDTRIP_H*/
