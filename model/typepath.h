#pragma once

/* Type name paths: the growing name of the place in a type at which a generator stands, built of
   element names such as "a" and ".b". Paths stack, since a generator may begin a new one in the
   middle of another; every operation works on the top path alone.

   Each operation that needs a path ends with fatal error 13 if there is none. */

/* Longest text of a path; a longer one is fatal error 13. */
inline constexpr int MAX_TYPE_PATH = 512;

/* Begins a new empty path on top. */
void pushPath();
/* Drops the top path. */
void popPath();
/* Drops all paths. */
void resetPath();
/* Appends an element. */
void addElemToPath(const char *text);
/* Takes the last element off; fatal error 13 if the path has none. */
void removeElemFromPath();
/* The text of the top path. It changes as the path does. The place stays readable when its path has
   been dropped, but then shows whatever later path lies there. */
const char *getPath();
/* True if a path exists. */
bool typePathInUse();
