/* Ends of a process that skip its clean-up: the linker leads them here in a build that counts what runs. */

void __gcov_dump (void);
void __real__exit (int status);
void __wrap__exit (int status);
void __wrap__Exit (int status);
int __real_execvp (const char *file, char *const argv[]);
int __wrap_execvp (const char *file, char *const argv[]);

/* Where there is memory that fails (tests/faults), it does so no more: writing counts needs some. */
void disarmFaults (void) __attribute__ ((weak));

static void writeCounts (void)
{
  if (disarmFaults)
    disarmFaults ();
  __gcov_dump ();
}

void __wrap__exit (int status)
{
  writeCounts ();
  __real__exit (status);
}

void __wrap__Exit (int status)
{
  __wrap__exit (status);
}

int __wrap_execvp (const char *file, char *const argv[])
{
  writeCounts ();
  return __real_execvp (file, argv);
}
