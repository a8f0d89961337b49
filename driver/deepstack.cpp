#include "driver/driver.h"

#include <pthread.h>

#include "store/records.h"

namespace {

struct Run {
    int (*run)(int argc, char **argv);
    int argc;
    char **argv;
    int result;
};

void *callRun(void *argument) {
    auto *run = static_cast<Run *>(argument);
    run->result = run->run(run->argc, run->argv);
    return nullptr;
}

constexpr int LEVELS = 50'000;
/* A level takes about 1,000 bytes, and with sanitizers 3,000. Only what is touched takes memory. */
constexpr std::size_t BYTES_PER_LEVEL = 10'000;

} // namespace

int runOnDeepStack(int (*run)(int argc, char **argv), int argc, char **argv) {
    Run all = {run, argc, argv, 0};
    pthread_t thread;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    nestingLimit = LEVELS;
    if (pthread_attr_setstacksize(&attributes, BYTES_PER_LEVEL * LEVELS) == 0 &&
        pthread_create(&thread, &attributes, callRun, &all) == 0) {
        pthread_join(thread, nullptr);
    } else {
        nestingLimit = MAX_NESTING;
        callRun(&all);
    }
    pthread_attr_destroy(&attributes);
    return all.result;
}
