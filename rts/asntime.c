/* Moments in time, and the characters that encode them. */

#include "asnint.h"

enum { LOCAL_TIME, UTC, LOCAL_WITH_DIFFERENCE };

#define MAX_FRACTION_DIGITS 9
#define NOT_TOLD (-1)

/* --- from characters --- */

typedef struct {
  const char *p;
  const char *end;
} READER;

/* Reads exactly `digits` digits; -1 if they are not there. */
static int readNumberOf (READER *r, int digits)
{
  int number = 0;
  if (r->end - r->p < digits)
    return -1;
  for (; digits > 0; digits--, r->p++) {
    if (*r->p < '0' || *r->p > '9')
      return -1;
    number = number * 10 + (*r->p - '0');
  }
  return number;
}

static BOOLE isDigitNext (const READER *r)
{
  return r->p < r->end && *r->p >= '0' && *r->p <= '9';
}

static int daysOf (int year, int month)
{
  static const int days[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
  BOOLE isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return days[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

static BOOLE readDate (READER *r, int isUtc, DATETIMEZ *value)
{
  int year = readNumberOf (r, isUtc ? 2 : 4), month = readNumberOf (r, 2), day = readNumberOf (r, 2);
  if (year < 0 || month < 1 || month > 12 || day < 1)
    return FALSE;
  if (isUtc) /* the two digits mean the years from 1950 to 2049 */
    year += year < 50 ? 2000 : 1900;
  value->year = (sint16)year;
  value->month = (uint8)month;
  value->day = (uint8)day;
  return day <= daysOf (year, month);
}

static BOOLE readClock (READER *r, int isUtc, DATETIMEZ *value)
{
  int hour = readNumberOf (r, 2), minute = NOT_TOLD, second = NOT_TOLD;
  if (isUtc || isDigitNext (r)) {
    minute = readNumberOf (r, 2);
    if (minute < 0)
      return FALSE;
    if (isDigitNext (r)) {
      second = readNumberOf (r, 2);
      if (second < 0)
        return FALSE;
    }
  }
  value->hour = (uint8)hour;
  value->minute = (sint8)minute;
  value->second = (sint8)second;
  return hour >= 0 && hour < 24 && minute < 60 && second <= 60;
}

static BOOLE readFraction (READER *r, DATETIMEZ *value)
{
  value->fraction = 0;
  value->fractionDigits = 0;
  if (r->p == r->end || (*r->p != '.' && *r->p != ','))
    return TRUE;
  r->p++;
  while (isDigitNext (r)) {
    if (value->fractionDigits == MAX_FRACTION_DIGITS)
      return FALSE;
    value->fraction = value->fraction * 10 + (uint32)readNumberOf (r, 1);
    value->fractionDigits++;
  }
  return value->fractionDigits > 0;
}

static BOOLE readZone (READER *r, int isUtc, DATETIMEZ *value)
{
  int hours, minutes = 0;
  BOOLE isWest;
  value->zone = LOCAL_TIME;
  value->differenceMinutes = 0;
  if (r->p == r->end)
    return !isUtc;
  if (*r->p == 'Z') {
    r->p++;
    value->zone = UTC;
    return TRUE;
  }
  if (*r->p != '+' && *r->p != '-')
    return FALSE;
  isWest = *r->p++ == '-';
  hours = readNumberOf (r, 2);
  if (isUtc || isDigitNext (r))
    minutes = readNumberOf (r, 2);
  if (hours < 0 || hours > 15 || minutes < 0 || minutes > 59)
    return FALSE;
  value->zone = LOCAL_WITH_DIFFERENCE;
  value->differenceMinutes = (sint16)(isWest ? -(hours * 60 + minutes) : hours * 60 + minutes);
  return TRUE;
}

BOOLE asnTimeFromText (const char *text, size_t length, int isUtc, DATETIMEZ *value)
{
  READER r;
  r.p = text;
  r.end = text + length;
  if (!readDate (&r, isUtc, value) || !readClock (&r, isUtc, value))
    return FALSE;
  value->fraction = 0;
  value->fractionDigits = 0;
  if (!isUtc && !readFraction (&r, value))
    return FALSE;
  return readZone (&r, isUtc, value) && r.p == r.end;
}

/* --- to characters --- */

static char *writeDigits (char *p, uint32 number, int digits)
{
  for (int i = digits; i-- > 0; number /= 10)
    p[i] = (char)('0' + number % 10);
  return p + digits;
}

static char *writeZone (char *p, const DATETIMEZ *value)
{
  if (value->zone == UTC) {
    *p++ = 'Z';
  } else if (value->zone == LOCAL_WITH_DIFFERENCE) {
    int difference = value->differenceMinutes;
    *p++ = difference < 0 ? '-' : '+';
    if (difference < 0)
      difference = -difference;
    p = writeDigits (p, (uint32)difference / 60, 2);
    p = writeDigits (p, (uint32)difference % 60, 2);
  }
  return p;
}

static BOOLE isUtcYear (int year)
{
  return year >= 1950 && year < 2050;
}

/* Whether each number had as many digits as it was written with. */
static BOOLE isSameMoment (const DATETIMEZ *a, const DATETIMEZ *b)
{
  return a->month == b->month && a->day == b->day && a->hour == b->hour &&
         (a->minute < 0 || a->minute == b->minute) && (a->second < 0 || a->second == b->second) &&
         (a->fractionDigits == 0 || a->fraction == b->fraction);
}

size_t asnTextFromTime (const DATETIMEZ *value, int isUtc, char *text)
{
  DATETIMEZ again;
  char *p = text;
  if (value->year < 0 || value->year > 9999 || (isUtc && !isUtcYear (value->year)) ||
      value->fractionDigits > MAX_FRACTION_DIGITS || (isUtc && value->fractionDigits > 0) ||
      (value->minute < 0 && value->second >= 0) || value->differenceMinutes > 15 * 60 + 59 ||
      value->differenceMinutes < -(15 * 60 + 59))
    return 0;
  p = isUtc ? writeDigits (p, (uint32)value->year % 100, 2)
            : writeDigits (p, (uint32)value->year, 4);
  p = writeDigits (p, value->month, 2);
  p = writeDigits (p, value->day, 2);
  p = writeDigits (p, value->hour, 2);
  if (value->minute >= 0)
    p = writeDigits (p, (uint32)value->minute, 2);
  if (value->second >= 0)
    p = writeDigits (p, (uint32)value->second, 2);
  if (value->fractionDigits > 0) {
    *p++ = '.';
    p = writeDigits (p, value->fraction, value->fractionDigits);
  }
  p = writeZone (p, value);
  *p = 0;
  /* What cannot be read again is no moment: month 13, say. */
  return asnTimeFromText (text, (size_t)(p - text), isUtc, &again) && isSameMoment (value, &again)
           ? (size_t)(p - text)
           : 0;
}

/* --- encoding and decoding --- */

static void encodeTime (ASNCODG *g, uint32 tag, const DATETIMEZ *value, int isUtc)
{
  char text[ASN_TIME_TEXT];
  uint32 used = asnUsed (g);
  size_t length = asnTextFromTime (value, isUtc, text);
  if (length == 0) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  asnPutOctets (g, text, length);
  asnPutHeader (g, tag, used);
}

void asnEncGeneralizedTime (ASNCODG *g, uint32 tag, const DATETIMEZ *value)
{
  encodeTime (g, tag, value, FALSE);
}

void asnEncUTCTime (ASNCODG *g, uint32 tag, const DATETIMEZ *value)
{
  encodeTime (g, tag, value, TRUE);
}

void asnEncCommonTime (ASNCODG *g, uint32 tag, const COMMONTIME *value, int isUtc)
{
  uint32 used = asnUsed (g);
  DATETIMEZ moment;
  if (value->n > sizeof value->st || !asnTimeFromText (value->st, value->n, isUtc, &moment)) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  asnPutOctets (g, value->st, value->n);
  asnPutHeader (g, tag, used);
}

/* The characters of a time in hand, which is a string like any other; -1 after an error. */
static int takeText (ASNCODG *g, int isUtc, char *text, size_t size, DATETIMEZ *moment)
{
  enum { TAG_VISIBLE = 26 };
  ASN_SEGMENTS segments;
  const BYTE_TYPE *p;
  uint32 len;
  size_t length = 0;
  asnStartSegments (g, &segments, TAG_VISIBLE);
  while (asnNextSegment (g, &segments, &p, &len)) {
    if (len > size - length) {
      asnRaise (&g->util, AM_FAIL);
      return -1;
    }
    memcpy (text + length, p, len);
    length += len;
  }
  if (asnFailed (g))
    return -1;
  if (!asnTimeFromText (text, length, isUtc, moment)) {
    asnRaise (&g->util, VALUE_FAIL);
    return -1;
  }
  return (int)length;
}

static void decodeTime (ASNCODG *g, DATETIMEZ *value, int isUtc)
{
  char text[ASN_TIME_TEXT];
  DATETIMEZ moment;
  if (takeText (g, isUtc, text, sizeof text, &moment) >= 0)
    *value = moment;
}

void asnDecGeneralizedTime (ASNCODG *g, DATETIMEZ *value)
{
  decodeTime (g, value, FALSE);
}

void asnDecUTCTime (ASNCODG *g, DATETIMEZ *value)
{
  decodeTime (g, value, TRUE);
}

void asnDecCommonTime (ASNCODG *g, COMMONTIME *value, int isUtc)
{
  char text[sizeof value->st - 1];
  DATETIMEZ moment;
  int length = takeText (g, isUtc, text, sizeof text, &moment);
  if (length < 0)
    return;
  memcpy (value->st, text, (size_t)length);
  value->st[length] = 0;
  value->n = (uint8)length;
}
