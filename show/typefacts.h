#pragma once

struct AsnType;

/* What is known of a type beside its notation, as comments below it: where it stands, how it is
   held in C, its tags as they are encoded, the constraints, values and sizes that apply in the end,
   and the option bits. */
void showTypeFacts(int level, AsnType *type);
