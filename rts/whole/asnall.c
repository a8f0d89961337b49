/* The whole run-time layer as one source, for a program that compiles it together with its own. */

#include "../asnapi.c"
#include "../asnask.c"
#include "../asnaskstring.c"
#include "../asnaskvalue.c"
#include "../asncomponent.c"
#include "../asndecnum.c"
#include "../asndecode.c"
#include "../asndecstring.c"
#include "../asndialogue.c"
#include "../asnencode.c"
#include "../asnerror.c"
#include "../asnexternal.c"
#include "../asnframe.c"
#include "../asnmemory.c"
#include "../asnoid.c"
#include "../asnprint.c"
#include "../asnprintstring.c"
#include "../asnprintvalue.c"
#include "../asnreal.c"
#include "../asnstring.c"
#include "../asntest.c"
#include "../asntime.c"

/* Generated encoding and decoding functions may follow. */
#undef ASN_UTIG_
#define ASN_UTIG_ asncodg_asnuti
