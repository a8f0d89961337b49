#pragma once

struct AsnType;
struct TypeFuncRun;

/* Passing over data: skipped types, and the elements of a list beyond its size limit. */

/* What stands where the content of a skipped type would come. An unknown skipKind is fatal
 * error 13. */
void skipType(AsnType *type, TypeFuncRun &run);
/* Behind the main loop of a list: reads on past its size limit and counts what is thrown away.
   Writes nothing unless the list ignores elements beyond a limit below its constraint's bound. */
void ignoreTrailingListElems(AsnType *father, AsnType *elem, TypeFuncRun &run);

/* True if the type has a size limit and elements beyond it are ignored (not an error); generated
   code then marks that there are some in a variable extraElems. */
bool cIsIgnoringSizeLimit(AsnType *type);
