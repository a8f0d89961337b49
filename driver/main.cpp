#include "driver/driver.h"

int main(int argc, char **argv) {
    return runOnDeepStack(velmo_main, argc, argv);
}
