/* Which component a tag belongs to, and which may come. */

#include "asntoolint.h"

static BOOLE fits (const ASNTOOLPLACE *place, const uint32 *tags, uint32 tag, uint32 depth)
{
  if (asnIsMarker (place) || depth > ASN_MOST_LEVELS)
    return FALSE;
  if (*tags)
    return *tags == tag;
  if (place->type->kind != TYP_CHOICE)
    return tag != EOC_TAG;
  for (uint32 i = 0; i < place->type->nrOfPlaces; i++) {
    const ASNTOOLPLACE *alternative = &place->type->places[i];
    if (fits (alternative, alternative->tags, tag, depth + 1))
      return TRUE;
  }
  return FALSE;
}

ASN_MATCH asnStartMatch (const ASNTOOLTYPE *type)
{
  ASN_MATCH match = { type, 0, FALSE, FALSE };
  match.ordered = type->kind == TYP_SEQ || type->kind == TYP_EXTERNAL || type->kind == TYP_EXTERNAL_1994;
  if (!match.ordered)
    for (uint32 i = 0; i < type->nrOfPlaces; i++)
      match.isOpen |= asnIsMarker (&type->places[i]);
  return match;
}

sint64 asnMatchTag (ASN_MATCH *match, uint32 tag)
{
  const ASNTOOLTYPE *type = match->type;
  uint32 afterMarker = match->next;
  for (uint32 i = match->next; i < type->nrOfPlaces; i++) {
    const ASNTOOLPLACE *place = &type->places[i];
    if (asnIsMarker (place)) {
      match->isOpen = TRUE;
      afterMarker = i + 1;
    } else if (fits (place, place->tags, tag, 0)) {
      if (match->ordered)
        match->next = i + 1;
      return i;
    } else if (match->ordered && place->status == TCS_MANDATORY) {
      break;
    }
  }
  if (match->ordered)
    match->next = afterMarker;
  return match->isOpen ? ASN_FOREIGN : ASN_NOTHING;
}

BOOLE asnLacksMandatory (const ASN_MATCH *match, const BYTE_TYPE *const *places)
{
  for (uint32 i = match->next; i < match->type->nrOfPlaces; i++) {
    const ASNTOOLPLACE *place = &match->type->places[i];
    if (!asnIsMarker (place) && place->status == TCS_MANDATORY && (!places || !places[i]))
      return TRUE;
  }
  return FALSE;
}

void asnAddMatch (ASN_GROWING *to, const ASN_MATCH *match, BOOLE mayEnd)
{
  const ASNTOOLTYPE *type = match->type;
  enum { MOST = 8 };
  uint32 told = 0, left = 0;
  for (uint32 i = match->next; i < type->nrOfPlaces; i++) {
    const ASNTOOLPLACE *place = &type->places[i];
    if (asnIsMarker (place))
      continue;
    if (told == MOST) {
      left++;
    } else {
      asnAddText (to, told++ > 0 ? ", " : "");
      asnAddPlace (to, place);
    }
    if (match->ordered && place->status == TCS_MANDATORY) {
      mayEnd = FALSE;
      break;
    }
  }
  if (left == 1) {
    asnAddText (to, ", or another");
  } else if (left > 1) {
    asnAddText (to, ", or one of ");
    asnAddNumber (to, left);
    asnAddText (to, " others");
  }
  if (mayEnd) {
    asnAddText (to, told > 0 ? ", or the end of " : "the end of ");
    asnAddText (to, type->name ? type->name : asnKindName (type->kind));
  }
}
