#include "driver/deepstack.h"
#include "driver/velmo_main.h"

int main(int argc, char **argv) {
    return runOnDeepStack(velmo_main, argc, argv);
}
