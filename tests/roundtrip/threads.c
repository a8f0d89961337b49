/* Eight threads that code the same encodings with the reentrant layer, each with contexts of its own, to be
   run under ThreadSanitizer. Each has to come to what one thread alone comes to.

   usage: threads FILE ...        each an octet for the type, and an encoding */

#define _GNU_SOURCE

#include "values.h"

#include <pthread.h>
#include <stdlib.h>

enum { THREADS = 8 };

typedef struct {
  const ENTRYDESCR *row;
  ENCODING encoding; /* what was read */
  char *text;        /* and what comes of it */
  ENCODING again;
} MESSAGE;

static MESSAGE *messages;
static int nrOfMessages;

static void readMessage (MESSAGE *m, const char *path)
{
  FILE *in = fopen (path, "rb");
  int number = in ? fgetc (in) : EOF;
  if (number == EOF) {
    perror (path);
    exit (2);
  }
  m->row = rowNumbered (number);
  m->encoding.octets = malloc (1 << 16);
  m->encoding.length = fread (m->encoding.octets, 1, 1 << 16, in);
  fclose (in);
}

static void code (const MESSAGE *m, MESSAGE *result)
{
  VALUE v;
  ASNERROR error;
  memset (result, 0, sizeof *result);
  openValue (&v, m->row);
  if (decode (&v, m->encoding.octets, m->encoding.length, &error)) {
    result->text = print (&v);
    result->again = encode (&v);
  }
  closeValue (&v);
}

static BOOLE isSame (const MESSAGE *m, const MESSAGE *result)
{
  return result->text && result->again.octets && strcmp (m->text, result->text) == 0 &&
         m->again.length == result->again.length &&
         memcmp (m->again.octets, result->again.octets, m->again.length) == 0;
}

/* All messages, from a different one on in each thread. The number of those that differ. */
static void *run (void *first)
{
  long different = 0;
  for (int i = 0; i < nrOfMessages; i++) {
    MESSAGE result, *m = &messages[(i + *(int *)first) % nrOfMessages];
    code (m, &result);
    different += !isSame (m, &result);
    free (result.text);
    free (result.again.octets);
  }
  return (void *)different;
}

int main (int argc, char **argv)
{
  pthread_t threads[THREADS];
  int firsts[THREADS];
  long different = 0;
  nrOfMessages = argc - 1;
  messages = calloc ((size_t)argc, sizeof *messages);
  script = "threads";
  for (int i = 0; i < nrOfMessages; i++) {
    MESSAGE alone;
    readMessage (&messages[i], argv[i + 1]);
    code (&messages[i], &alone);
    messages[i].text = alone.text;
    messages[i].again = alone.again;
  }
  for (int i = 0; i < THREADS; i++) {
    firsts[i] = i * nrOfMessages / THREADS / 4; /* most of the time at neighbours */
    if (pthread_create (&threads[i], NULL, run, &firsts[i]) != 0)
      return 2;
  }
  for (int i = 0; i < THREADS; i++) {
    void *result;
    pthread_join (threads[i], &result);
    different += (long)result;
  }
  printf ("%d messages in each of %d threads, %ld differences\n", nrOfMessages, THREADS, different);
  return different == 0 && failures == 0 && nrOfMessages > 0 ? 0 : 1;
}
