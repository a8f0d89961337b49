/* The table of a directory protocol. */

#include "values.h"

#include "ldap.tab"

const MODULE modules[] = {
  { "ldap", ldapEntryDescr, (int)(sizeof ldapEntryDescr / sizeof ldapEntryDescr[0]) },
};
const int nrOfModules = 1;
