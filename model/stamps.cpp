#include "model/stamps.h"

#include "model/iterators.h"
#include "model/typequeries.h"
#include "store/records.h"

namespace {

/* Above the stamp that loading gives to the types of modules that are generated. */
constexpr int FIRST_STAMP = 6;

void setStamps(int first) {
    stampGHD = first;
    stampGIP = first + 1;
    stampGAD = first + 2;
}

void stampCurrentTNode(int stamp) {
    tNode.stamp = static_cast<std::int16_t>(stamp);
    writeRec(recJustRead[REC_TNODE].module, REC_TNODE, recJustRead[REC_TNODE].nr);
}

void stampRecord(ModRec *module, RecNr record, int stamp) {
    readRec(module, REC_TNODE, record);
    stampCurrentTNode(stamp);
}

} // namespace

/* Each pass gets three numbers above all that were used, so that a mark of an earlier pass
   counts as none and no record is ever wiped. */

int stampGHD = FIRST_STAMP;
int stampGIP = FIRST_STAMP + 1;
int stampGAD = FIRST_STAMP + 2;

void resetStamps() {
    setStamps(FIRST_STAMP);
}

void initStamps() {
    setStamps(stampGAD + 1);
}

/* Marks are read from the record each time: another handle may have set one meanwhile. */

int getTypeStamp(AsnType *type) {
    type->stamp = storedTNode(type->posModule, type->posRecord).stamp;
    return type->stamp;
}

int getBaseTypeStamp(AsnType *type) {
    type->base.stamp = storedTNode(type->baseModule, type->baseRecord).stamp;
    return type->base.stamp;
}

void setTypeStamp(AsnType *type, int stamp) {
    type->stamp = stamp;
    stampRecord(type->posModule, type->posRecord, stamp);
}

void setBaseTypeStamp(AsnType *type, int stamp) {
    stampRecord(type->baseModule, type->baseRecord, stamp);
    type->base.stamp = tNode.stamp;
    if (tNode.compStatus != TCS_PARAM_HEAD)
        return;
    readSynonymTypeTNode(type, isCompOrElemType(type));
    stampCurrentTNode(stamp);
}

/* A definition that is met again while it is under work, through its own parts, has begun but
   isn't done. */

bool processingStarted(AsnType *type) {
    return getTypeStamp(type) >= stampGIP;
}

void setProcessingNow(AsnType *type) {
    setTypeStamp(type, stampGIP);
}

void setProcessingDone(AsnType *type) {
    setTypeStamp(type, stampGAD);
}
