/* The program that velmo-tool makes of the example modules: the first line of an input has the words of a
   command, what follows is the file. */

#define _GNU_SOURCE

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

int LLVMFuzzerTestOneInput (const uint8_t *data, size_t size);
int message_main (int argc, char **argv); /* main of the program */

enum { MOST_WORDS = 10 };

/* A file that holds the octets. */
static const char *fileOf (const uint8_t *octets, size_t size)
{
  static char path[40];
  static int file = -1;
  if (file < 0) {
    file = memfd_create ("message", 0);
    snprintf (path, sizeof path, "/proc/self/fd/%d", file);
  }
  if (file < 0 || ftruncate (file, 0) != 0 || pwrite (file, octets, size, 0) != (ssize_t)size)
    abort ();
  return path;
}

static void run (char **words, int count)
{
  static FILE *nowhere;
  FILE *out = stdout, *err = stderr;
  if (!nowhere) {
    nowhere = fopen ("/dev/null", "w");
    if (!freopen ("/dev/null", "r", stdin))
      abort ();
  }
  stdout = stderr = nowhere;
  int status = message_main (count, words);
  stdout = out;
  stderr = err;
  if (status < 0 || status > 2)
    abort ();
}

int LLVMFuzzerTestOneInput (const uint8_t *data, size_t size)
{
  char line[200], *words[MOST_WORDS + 2] = { (char *)"message" };
  const uint8_t *end = size == 0 ? NULL : memchr (data, '\n', size < sizeof line ? size : sizeof line - 1);
  int count = 1;
  if (!end)
    return 0;
  memcpy (line, data, (size_t)(end - data));
  line[end - data] = 0;
  if (strchr (line, '/')) /* it reads no other files */
    return 0;
  for (char *word = strtok (line, " "); word && count < MOST_WORDS; word = strtok (NULL, " "))
    words[count++] = word;
  words[count++] = (char *)fileOf (end + 1, size - (size_t)(end + 1 - data));
  run (words, count);
  return 0;
}
