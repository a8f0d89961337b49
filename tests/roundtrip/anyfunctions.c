/* What an application supplies for ANY and open types that are no frames. This one knows none of the
   types that can stand there, and keeps each value as its encoding. */

#include "asncodec.ext"
#include "asntst.ext"

static void anyEnc (const ANY *any)
{
  FRAME_PTR frame = any->value;
  e_Frame_0 (&frame);
}

static void anyDec (ANY *any)
{
  FRAME_PTR frame = NULL;
  d_Frame_0 (&frame);
  any->value = frame;
}

static void anyAsk (ANY *any)
{
  FRAME_PTR frame = NULL;
  a_Frame_0 (&frame);
  any->value = frame;
}

static void anyPri (const ANY *any)
{
  FRAME_PTR frame = any->value;
  p_Frame_0 (&frame);
}

/* The functions of one type; `classifier` is the value that tells which type it is, where there is one. */
#define TYPE(name) \
  void anyEnc##name (ANY *any, BYTE_TYPE *classifier); \
  void anyDec##name (ANY *any, BYTE_TYPE *classifier); \
  void anyAsk##name (ANY *any, BYTE_TYPE *classifier); \
  void anyPri##name (ANY *any, BYTE_TYPE *classifier); \
  void anyEnc##name (ANY *any, BYTE_TYPE *classifier) { (void)classifier; anyEnc (any); } \
  void anyDec##name (ANY *any, BYTE_TYPE *classifier) { (void)classifier; anyDec (any); } \
  void anyAsk##name (ANY *any, BYTE_TYPE *classifier) { (void)classifier; anyAsk (any); } \
  void anyPri##name (ANY *any, BYTE_TYPE *classifier) { (void)classifier; anyPri (any); }
TYPE (Something)
TYPE (rest_From_Stock)
TYPE (info_From_Stock)
TYPE (value_Class_Of)
