/* What an application supplies for ANY and open types that are no frames. This one knows none of the
   types that can stand there, and keeps each value as its encoding. */

#include "asncodec.ext"
#include "asntst.ext"

static void anyEnc (ASNG_F (ASNCODG *asncodg) const ANY *any)
{
  FRAME_PTR frame = any->value;
  e_Frame_0 (&frame);
}

static void anyDec (ASNG_F (ASNCODG *asncodg) ANY *any)
{
  FRAME_PTR frame = NULL;
  d_Frame_0 (&frame);
  any->value = frame;
}

static void anyAsk (ASNG_F (ASNTSTG *asntstg) ANY *any)
{
  FRAME_PTR frame = NULL;
  a_Frame_0 (&frame);
  any->value = frame;
}

static void anyPri (ASNG_F (ASNTSTG *asntstg) const ANY *any)
{
  FRAME_PTR frame = any->value;
  p_Frame_0 (&frame);
}

/* The functions of one type; `classifier` is the value that tells which type it is, where there is one. */
#define FUNCTION(what, context, g, name) \
  void any##what##name (ASNG_F (context * g) ANY *any, BYTE_TYPE *classifier); \
  void any##what##name (ASNG_F (context * g) ANY *any, BYTE_TYPE *classifier) \
  { \
    (void)classifier; \
    any##what (ASNG_F (g) any); \
  }
#define TYPE(name) \
  FUNCTION (Enc, ASNCODG, asncodg, name) \
  FUNCTION (Dec, ASNCODG, asncodg, name) \
  FUNCTION (Ask, ASNTSTG, asntstg, name) \
  FUNCTION (Pri, ASNTSTG, asntstg, name)
TYPE (Something)
TYPE (rest_From_Stock)
TYPE (info_From_Stock)
TYPE (value_Class_Of)
TYPE (argument_Request)
