/* Memory, homes, lists and dynamic arrays. */

#include "asnapi.h"
#include "asnint.h"

#include <stdlib.h>

/* --- memory in chunks --- */

typedef union {
  REAL128 real;
  void *pointer;
  sint64 number;
} STRICTEST;

#define ROUND_UP(size) (((size) + sizeof (STRICTEST) - 1) / sizeof (STRICTEST) * sizeof (STRICTEST))
#define FIRST_CHUNK ((size_t)2000)
#define LAST_CHUNK ((size_t)64000)

/* The octets follow it. Those in use are the first ones and, where their alignment is no matter, the last. */
struct ASNCHUNK_ {
  struct ASNCHUNK_ *next;
  size_t size;
  size_t used; /* of the first ones */
  size_t end;  /* where the last ones begin */
};
typedef struct ASNCHUNK_ CHUNK;

/* A home with what it owns. A value behind a pointer follows it. */
struct ASNHOLD_ {
  struct ASNHOLD_ *next;
  struct ASNHOLD_ **place; /* what points to this one */
  ASNHOME *below;          /* the next home on the stack of homes */
  ASNMEM *root;            /* where its octets count */
  ASNMEM owned;
  ASNHOME home;
};
typedef struct ASNHOLD_ HOLD;

/* Every home but the items of lists stands in one. */
static inline HOLD *holdOf (ASNHOME *home)
{
  return (HOLD *)(void *)((BYTE_TYPE *)home - offsetof (HOLD, home));
}

#define CHUNK_HEAD ROUND_UP (sizeof (CHUNK))
#define HOLD_HEAD ROUND_UP (sizeof (HOLD))

/* Takes `size` octets off what the handle may give. */
static BOOLE charge (ASNMEM *root, size_t size)
{
  uint32 limit = root->limit ? root->limit : ASN_MEMORY_LIMIT;
  if (root->inUse > limit || size > limit - root->inUse)
    return FALSE;
  root->inUse += (uint32)size;
  return TRUE;
}

/* A chunk for at least `size` octets behind those of `mem`; their memory counts at `root`. */
static CHUNK *addChunk (ASNMEM *mem, ASNMEM *root, size_t size)
{
  CHUNK *chunk;
  size_t room = mem->chunks ? 4 * mem->chunks->size : mem == root ? FIRST_CHUNK : FIRST_CHUNK / 4;
  if (room > LAST_CHUNK)
    room = LAST_CHUNK;
  if (room < size)
    room = size;
  room = ROUND_UP (room);
  if (!charge (root, room))
    return NULL;
  chunk = (CHUNK *)malloc (CHUNK_HEAD + room);
  if (!chunk) {
    root->inUse -= (uint32)room;
    return NULL;
  }
  chunk->size = chunk->end = room;
  chunk->used = 0;
  if (mem != root)
    mem->inUse += (uint32)room;
  /* A chunk that is full at once stays behind the one that is being filled. */
  if (mem->chunks && size > LAST_CHUNK) {
    chunk->next = mem->chunks->next;
    mem->chunks->next = chunk;
  } else {
    chunk->next = mem->chunks;
    mem->chunks = chunk;
  }
  return chunk;
}

/* A chunk that has room for so many octets, or null. */
static inline CHUNK *chunkFor (ASNMEM *mem, ASNMEM *root, size_t size)
{
  CHUNK *chunk = mem->chunks;
  if (chunk && chunk->end - chunk->used >= size)
    return chunk;
  return size > UINT32_MAX / 2 ? NULL : addChunk (mem, root, size);
}

/* Memory that is not zeroed. */
static inline void *allocate (ASNMEM *mem, ASNMEM *root, size_t size)
{
  CHUNK *chunk;
  void *octets;
  if (size > UINT32_MAX / 2)
    return NULL;
  size = ROUND_UP (size);
  chunk = chunkFor (mem, root, size);
  if (!chunk)
    return NULL;
  octets = (BYTE_TYPE *)chunk + CHUNK_HEAD + chunk->used;
  chunk->used += size;
  return octets;
}

static void freeChunks (CHUNK *chunk)
{
  while (chunk) {
    CHUNK *next = chunk->next;
    free (chunk);
    chunk = next;
  }
}

/* Frees homes with the homes that they own, whatever their nesting. */
static void freeHolds (HOLD *work)
{
  while (work) {
    HOLD *hold = work;
    work = hold->next;
    while (hold->owned.homes) {
      HOLD *inner = hold->owned.homes;
      hold->owned.homes = inner->next;
      inner->next = work;
      work = inner;
    }
    freeChunks (hold->owned.chunks);
    hold->root->inUse -= hold->owned.inUse;
    free (hold);
  }
}

void asnFreeMemory (ASNMEM *memory)
{
  freeHolds (memory->homes);
  freeChunks (memory->chunks);
  memory->homes = NULL;
  memory->chunks = NULL;
  memory->inUse = 0;
}

/* What allocations count at. */
static inline ASNMEM *rootOf (const ASNUTIG *util, ASNMEM *mem)
{
  return util->memory ? util->memory : mem;
}

static inline void *allocateInHand (ASNUTIG *util, ASNMEM *memory, size_t size)
{
  ASNMEM *mem = memory ? memory : util->inHand;
  return mem ? allocate (mem, rootOf (util, mem), size) : NULL;
}

void *asnAllocate (ASNUTIG *util, ASNMEM *memory, size_t size)
{
  void *octets;
  util->allocated = TRUE;
  octets = allocateInHand (util, memory, size);
  return octets ? memset (octets, 0, size) : NULL;
}

ASN_RARE static void *takeAlignedElsewhere (ASNUTIG *util, size_t size)
{
  void *octets = allocateInHand (util, NULL, size);
  if (!octets)
    asnRaiseFatal (util, LACK_OF_MEMORY);
  return octets;
}

void *asnTake (ASNUTIG *util, size_t size)
{
  CHUNK *chunk = util->inHand ? util->inHand->chunks : NULL;
  BYTE_TYPE *octets;
  if (!chunk || size > LAST_CHUNK || chunk->end - chunk->used < ROUND_UP (size))
    return takeAlignedElsewhere (util, size);
  octets = (BYTE_TYPE *)chunk + CHUNK_HEAD + chunk->used;
  chunk->used += ROUND_UP (size);
  return octets;
}

ASN_RARE static void *takeElsewhere (ASNUTIG *util, size_t size)
{
  ASNMEM *mem = util->inHand;
  CHUNK *chunk = mem ? chunkFor (mem, rootOf (util, mem), size) : NULL;
  if (!chunk)
    asnRaiseFatal (util, LACK_OF_MEMORY);
  chunk->end -= size;
  return (BYTE_TYPE *)chunk + CHUNK_HEAD + chunk->end;
}

void *asnTakeOctets (ASNUTIG *util, size_t size)
{
  const ASNMEM *mem = util->inHand;
  CHUNK *chunk = mem ? mem->chunks : NULL;
  if (!chunk || chunk->end - chunk->used < size)
    return takeElsewhere (util, size);
  chunk->end -= size;
  return (BYTE_TYPE *)chunk + CHUNK_HEAD + chunk->end;
}

void *asnNew (ASNMEM *memory, size_t size)
{
  void *octets = allocate (memory, memory, size);
  return octets ? memset (octets, 0, size) : NULL;
}

/* --- homes --- */

ASNMEM *asnMemoryOfHome (ASNUTIG *util)
{
  return util->inHand;
}

static ASNHOME *newHome (ASNMEM *mem, ASNMEM *root, int format, size_t size)
{
  HOLD *hold;
  size_t room = HOLD_HEAD + size;
  if (size > UINT32_MAX / 2 || !charge (root, room))
    return NULL;
  hold = (HOLD *)calloc (1, room);
  if (!hold) {
    root->inUse -= (uint32)room;
    return NULL;
  }
  hold->root = root;
  hold->owned.inUse = (uint32)room;
  hold->next = mem->homes;
  hold->place = &mem->homes;
  if (hold->next)
    hold->next->place = &hold->next;
  mem->homes = hold;
  hold->home.format = (uint16)format;
  if (size > 0)
    hold->home.val.stru = (BYTE_TYPE *)hold + HOLD_HEAD;
  return &hold->home;
}

void asnCreateHome (ASNUTIG *util, ASNMEM *memory, ASNHOME **home, int format, size_t size)
{
  ASNMEM *mem = memory ? memory : asnMemoryOfHome (util);
  util->allocated = TRUE;
  *home = mem ? newHome (mem, rootOf (util, mem), format, size) : NULL;
  if (!*home)
    asnRaiseFatal (util, LACK_OF_MEMORY);
}

ASNHOME *asnNewHome (ASNMEM *memory, int format, size_t size)
{
  return newHome (memory, memory, format, size);
}

void asnFreeHome (ASNHOME **home)
{
  HOLD *hold;
  if (!*home)
    return;
  hold = holdOf (*home);
  *home = NULL;
  *hold->place = hold->next;
  if (hold->next)
    hold->next->place = hold->place;
  hold->next = NULL;
  freeHolds (hold);
}

void asnPushHome (ASNUTIG *util, ASNHOME *home)
{
  holdOf (home)->below = util->homes;
  util->homes = home;
  util->inHand = &holdOf (home)->owned;
}

void asnPopHome (ASNUTIG *util)
{
  if (util->homes)
    util->homes = holdOf (util->homes)->below;
  util->inHand = util->homes ? &holdOf (util->homes)->owned : util->memory;
}

/* --- lists --- */

#define ITEM_HEAD ROUND_UP (sizeof (ASNHOME))

/* Puts a zeroed item at the end of a list. The value's own octets are zeroed last, so that nothing has to
   be kept meanwhile. */
static inline void append (LIST *list, ASNHOME *item, int format, size_t size)
{
  ASNHOME *last = list->last;
  memset (item, 0, sizeof *item);
  item->format = (uint16)format;
  item->prev = last;
  if (last)
    last->next = item;
  else
    list->first = item;
  list->last = item;
  if (size > 0) {
    item->val.stru = (BYTE_TYPE *)item + ITEM_HEAD;
    memset (item->val.stru, 0, size);
  }
}

/* Where the chunk in hand has no room. */
ASN_RARE static void appendElsewhere (ASNUTIG *util, ASNMEM *memory, LIST *list, ASNHOME **item,
                                      int format, size_t size)
{
  *item = (ASNHOME *)allocateInHand (util, memory, ITEM_HEAD + size);
  if (!*item)
    asnRaiseFatal (util, LACK_OF_MEMORY);
  append (list, *item, format, size);
}

static inline void appendItem (ASNUTIG *util, ASNMEM *memory, LIST *list, ASNHOME **item, int format,
                               size_t size)
{
  const ASNMEM *mem = memory ? memory : util->inHand;
  CHUNK *chunk = mem ? mem->chunks : NULL;
  if (chunk && size < LAST_CHUNK && chunk->end - chunk->used >= ITEM_HEAD + ROUND_UP (size)) {
    ASNHOME *added = (ASNHOME *)(void *)((BYTE_TYPE *)chunk + CHUNK_HEAD + chunk->used);
    chunk->used += ITEM_HEAD + ROUND_UP (size);
    *item = added;
    append (list, added, format, size);
  } else {
    appendElsewhere (util, memory, list, item, format, size);
  }
}

void asnAppendItem (ASNUTIG *util, ASNMEM *memory, LIST *list, ASNHOME **item, int format,
                    size_t size)
{
  appendItem (util, memory, list, item, format, size);
}

void asnAppendPlainItem (ASNUTIG *util, ASNMEM *memory, LIST *list, ASNHOME **item, int format)
{
  appendItem (util, memory, list, item, format, 0);
}

ASNHOME *asnNewItem (ASNMEM *memory, LIST *list, int format, size_t size)
{
  ASNHOME *item = (ASNHOME *)allocate (memory, memory, ITEM_HEAD + size);
  if (item) {
    append (list, item, format, size);
    list->n++;
  }
  return item;
}

/* --- dynamic arrays --- */

const AsnAllocType asnFixedArray_ = 0;

/* Stands before the first element. */
typedef struct {
  uint32 used;
  uint32 room;
} ARRAY;

#define ARRAY_HEAD ROUND_UP (sizeof (ARRAY))
#define FIRST_ELEMENTS 4

static ARRAY *newArray (ASNUTIG *util, uint32 room, size_t size)
{
  ARRAY *array;
  if (size > 0 && room > UINT32_MAX / 2 / size)
    asnRaiseFatal (util, LACK_OF_MEMORY);
  array = (ARRAY *)asnTake (util, ARRAY_HEAD + room * size);
  memset (array, 0, ARRAY_HEAD + room * size);
  array->room = room;
  return array;
}

/* The pointer to the first element has a type that is not known here. */
static void storeElements (void *elem, ARRAY *array)
{
  BYTE_TYPE *first = (BYTE_TYPE *)array + ARRAY_HEAD;
  memcpy (elem, &first, sizeof first);
}

void asnFirstElements (ASNUTIG *util, void *elem, sint64 limit, size_t size)
{
  const AsnAllocType *first;
  sint64 room = limit < 1 ? 1 : limit;
  if (util->error.code != ASN_OK)
    return;
  memcpy (&first, elem, sizeof first);
  if (first == &asnFixedArray_)
    room = room < UINT32_MAX ? room + 1 : UINT32_MAX; /* which is refused */
  else if (room > FIRST_ELEMENTS)
    room = FIRST_ELEMENTS;
  storeElements (elem, newArray (util, (uint32)room, size));
}

void asnGrowArray (ASNUTIG *util, void *elem, size_t size, uint32 n)
{
  BYTE_TYPE *first;
  ARRAY *array;
  if (util->error.code != ASN_OK)
    return;
  memcpy (&first, elem, sizeof first);
  array = (ARRAY *)(void *)(first - ARRAY_HEAD);
  array->used++;
  if (n != array->used) { /* the length member is too narrow for more */
    asnRaise (util, AM_FAIL);
    return;
  }
  if (array->used == array->room) {
    ARRAY *wider = newArray (util, array->room * 2, size);
    wider->used = array->used;
    memcpy ((BYTE_TYPE *)wider + ARRAY_HEAD, first, array->used * size);
    storeElements (elem, wider);
  }
}
