#include "driver/driver.h"
#include "show/show.h"

int main(int argc, char **argv) {
    return runOnDeepStack(velmo_show, argc, argv);
}
