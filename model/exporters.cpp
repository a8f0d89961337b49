#include "model/modules.h"

#include <unordered_set>

namespace {

/* A module whose imports are being visited. */
struct OpenModule {
    ModRec *modRec;
    AsnModule *handle; /* null for the module that the walk started from */
    std::size_t nextImport;
};

class ExporterWalk {
public:
    ExporterWalk(Call<bool(AsnModule *)> descends, Call<void(AsnModule *)> func)
        : descends_(descends), func_(func) {}

    void run(ModRec *start) {
        visited_.insert(start);
        open_.push_back({start, nullptr, 0});
        while (!open_.empty()) {
            if (ModRec *next = nextExporter(open_.back()))
                enter(next);
            else
                leave();
        }
    }

private:
    /* The next module to visit among the imports of an open one, null behind the last. */
    ModRec *nextExporter(OpenModule &module) {
        while (module.nextImport < module.modRec->imports.size()) {
            const PicRec &import = *module.modRec->imports.recs[module.nextImport++];
            if (import.picMod != nullptr && import.picMod->state != MOD_PREDEFINED &&
                import.picMark != 0 && visited_.insert(import.picMod).second)
                return import.picMod;
        }
        return nullptr;
    }

    void enter(ModRec *modRec) {
        cMP = modRec;
        AsnModule *handle = getAsnModule(modRec);
        std::size_t firstImport =
            descends_ && !descends_(handle) ? modRec->imports.size() : std::size_t{0};
        open_.push_back({modRec, handle, firstImport});
    }

    void leave() {
        OpenModule done = open_.back();
        open_.pop_back();
        if (done.handle == nullptr)
            return;
        cMP = done.modRec;
        func_(done.handle);
    }

    Call<bool(AsnModule *)> descends_;
    Call<void(AsnModule *)> func_;
    std::unordered_set<const ModRec *> visited_;
    std::vector<OpenModule> open_;
};

} // namespace

void forEachExporterFirst(AsnModule *module, Call<bool(AsnModule *)> descends,
                          Call<void(AsnModule *)> func) {
    requireCall(func);
    ModRec *current = cMP;
    ExporterWalk(descends, func).run(module->modRec);
    cMP = current;
}

void forEachExportingModule(AsnModule *module, Call<void(AsnModule *exporting)> func) {
    forEachExporterFirst(
        module, [](AsnModule *) { return false; }, func);
}
