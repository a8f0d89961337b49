/* What an application has for its entry tables. */
void putFirst(void), getFirst(void), putSecond(void), getSecond(void), showFirst(void), showSecond(void);
void encFirst(), decFirst(), askFirst(), encSecond(), decSecond(), askSecond();
void altEnc2First(void), altEnc0Second(void), altEnc2Second(void), altDec1Second(void);
extern int refTabFirst[], refTabSecond[];
