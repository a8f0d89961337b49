#pragma once

#include "model/backend.h"

/* State of the model that more than one of its files, or a generator, looks at. */

/* Handles of types get a meta record; set by setCreateBETypMetaFlag. */
extern bool glbCreateBETypMetaRecFlag;

/* The present marks of TNode.stamp: a type below stampGHD is untouched in this pass, stampGIP marks
   work that is going on, stampGAD finished work. */
extern int stampGHD;
extern int stampGIP;
extern int stampGAD;

/* C type of each ValueForm, VF_COUNT entries; null where there is none. */
extern const char *const *targetLangTypeArr;
