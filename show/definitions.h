#pragma once

struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct AsnType;
struct AsnValue;

/* Definitions that aren't types, each in ASN.1 notation with its facts below. */

void showValueSet(AsnType *set);
void showValue(AsnValue *value);
void showClass(AsnObjClass *objClass);
void showObject(AsnObject *object);
void showObjectSet(AsnObjectSet *set);
