#include "gen/functionkinds.h"

#include "cbet/functions.h"
#include "gen/fileset.h"

namespace {

/* Places of embedded text in front of and behind the functions of a kind. */
enum FunctionPlace : int {
    PLACE_BEFORE_ENCODING = 1,
    PLACE_BEFORE_DECODING = 2,
    PLACE_BEFORE_ASKING = 3,
    PLACE_BEFORE_PRINTING = 4,
    PLACE_AFTER_ENCODING = 6,
    PLACE_AFTER_DECODING = 7,
    PLACE_AFTER_ASKING = 8,
    PLACE_AFTER_PRINTING = 9,
};

struct KindRow {
    const int *outFile;
    const int *extFile;
    EntryBit entryBit;
    FunctionPlace before;
    FunctionPlace after;
    int gIndex;
    bool reverseComps; /* an encoding is written from its end */
    bool trackPath;
};

/* By FuncKind. */
constexpr KindRow kinds[] = {
    {&fiDec, &fiDecE, ENTRY_DECODING, PLACE_BEFORE_DECODING, PLACE_AFTER_DECODING, GIDX_CODING,
     false, true},
    {&fiPri, &fiPriE, ENTRY_PRINTING, PLACE_BEFORE_PRINTING, PLACE_AFTER_PRINTING, GIDX_TESTING,
     false, false},
    {&fiEnc, &fiEncE, ENTRY_ENCODING, PLACE_BEFORE_ENCODING, PLACE_AFTER_ENCODING, GIDX_CODING,
     true, false},
    {&fiAsk, &fiAskE, ENTRY_ASKING, PLACE_BEFORE_ASKING, PLACE_AFTER_ASKING, GIDX_TESTING, false,
     false},
};

} // namespace

void initFunctionKind(TypeFuncInfo *info, FuncKind kind) {
    const KindRow &row = kinds[kind];
    cInitTypeFuncInfo(info);
    info->outFile = *row.outFile;
    info->extFile = *row.extFile;
    info->entryBit = row.entryBit;
    info->tedBefore = row.before;
    info->tedAfter = row.after;
    info->funcKind = kind;
    info->ignoreMode = 0;
    info->gIndex = row.gIndex;
    info->reverseComps = row.reverseComps;
    info->trackPath = row.trackPath;
}
