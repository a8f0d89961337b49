#pragma once

#include "base/call.h"
#include "model/backend.h"

/* The tags of a type, from the outermost (index 0) to the innermost. */

using TagCall = Call<void(AsnType *type, const AsnTag *tag, int nbr)>;

enum TagMask : int { TAGS_OUTERMOST = 1, TAGS_BETWEEN = 2, TAGS_INNERMOST = 4 };

/* The tags that `mask` selects; a sole tag is both the outermost and the innermost one, except that
   the mask of all but the innermost never selects it. */
void forTags(AsnType *type, TagCall func, int mask, bool reverse);
void forEachTag(AsnType *type, TagCall func);
void forOutermostTag(AsnType *type, TagCall func);
/* All but the innermost. */
void forOutermostTags(AsnType *type, TagCall func);
void forOutermostTagsRevOrd(AsnType *type, TagCall func);
void forInnermostTag(AsnType *type, TagCall func);
/* All but the outermost. */
void forInnermostTags(AsnType *type, TagCall func);
/* Tags written on the position itself that are not universal. */
void forEachLocalTag(AsnType *type, TagCall func);

/* The universal tag that stands innermost on the record of the base, -1 if none does. It makes another
   builtin type of one that has no kind of its own: a UTF8String is an OCTET STRING under
   [UNIVERSAL 12]. */
int universalTagOfBase(AsnType *type);
int getNrOfTags(AsnType *type);
int getTagClass(const AsnTag *tag);
int getTagNumber(const AsnTag *tag);

/* TAG_UNI, TAG_APP, TAG_CTX, TAG_PRV; empty for another class. */
Text getTagClassStri(const AsnTag *tag);
