#pragma once

#include "model/backend.h"

/* Marks that generators set on types. They stand in the stored records: all handles on a record
   share them, and they outlive the handles. */

/* The present marks: a type below stampGHD is untouched in this pass, stampGIP marks work that is going
   on, stampGAD finished work. */
extern int stampGHD;
extern int stampGIP;
extern int stampGAD;

/* Before a module is worked on; before each pass over its types. */
void resetStamps();
void initStamps();

/* The mark as it is stored now. */
int getTypeStamp(AsnType *type);
int getBaseTypeStamp(AsnType *type);
void setTypeStamp(AsnType *type, int stamp);
/* Marks the name of an instantiation as well. */
void setBaseTypeStamp(AsnType *type, int stamp);

bool processingStarted(AsnType *type);
void setProcessingNow(AsnType *type);
void setProcessingDone(AsnType *type);
