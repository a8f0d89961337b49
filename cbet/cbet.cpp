#include "cbet/cbet.h"

#include "cbet/vars.h"
#include "model/valuequeries.h"

void cInitCBET(Call<void()> initBackend) {
    initBackend();
    setInfValueStri("MIN_LONG", "MAX_LONG", "MINREAL", "MAXREAL");
    cInitVars();
}
