#include "driver/velmo_main.h"

int main(int argc, char **argv) {
    return velmo_main(argc, argv);
}
