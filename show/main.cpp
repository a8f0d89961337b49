#include "driver/deepstack.h"
#include "show/velmo_show.h"

int main(int argc, char **argv) {
    return runOnDeepStack(velmo_show, argc, argv);
}
