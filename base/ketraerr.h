#pragma once

/* Codes of fatal errors; their texts and exit statuses stand in base/fatal.cpp, in this order. */
enum FatalCode : int {
    FATAL_OPEN_READ = 1,
    FATAL_OPEN_WRITE = 2,
    FATAL_MODULE_NAME = 3,
    FATAL_IDENTIFIER_PATH = 4,
    FATAL_NO_SPACE = 5,
    FATAL_READ = 6,
    FATAL_WRITE = 7,
    FATAL_CLOSE = 8,
    FATAL_READ_RECORD = 9,
    FATAL_WRITE_RECORD = 10,
    FATAL_VALUE_PARAMETER = 11,
    FATAL_MAP_MODULE = 12,
    FATAL_INTERNAL = 13,
    FATAL_END_OF_FILE = 14,
    FATAL_INCONSISTENT = 15,
    FATAL_NO_TREE = 16,
    FATAL_INVALID_TREE = 17,
    FATAL_NO_CALLBACK = 18,
    FATAL_OTHER = 65535,
};
