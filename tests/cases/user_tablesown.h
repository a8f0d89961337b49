void putDigest(void), getDigest(void), getLimits(void);
int putLimits(const void *limits);
