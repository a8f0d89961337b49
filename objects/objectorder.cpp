#include "objects/objectorder.h"

#include <unordered_map>

#include "base/fatal.h"
#include "objects/fieldvalues.h"
#include "objects/objectsets.h"
#include "store/records.h"

/* An inline object, as it was met. */
struct BuiltinObjInfo {
    RecNr posRecord = 0;
    bool skipped = false; /* the field that holds it is */
};

/* The objects of one class. */
struct ObjClassInfo {
    std::vector<RecNr> defined; /* in the order of their definition */
    std::vector<BuiltinObjInfo> builtin;
};

/* Classes by their base, in the order in which objects mention them first. */
struct ObjClassList {
    std::vector<ObjClassInfo> infos;
    std::unordered_map<NodePlace, std::size_t, PlaceHash> index;

    /* A predefined class without a name of its own is one class, wherever it stands. */
    static NodePlace keyOf(AsnObjClass *objClass) {
        if (isPlainPredefinedObjClass(objClass))
            return {nullptr, objClass->base.mainType};
        return {objClass->baseModule, objClass->baseRecord};
    }

    ObjClassInfo &of(AsnObjClass *objClass) {
        const NodePlace key = keyOf(objClass);
        const auto [place, isNew] = index.try_emplace(key, infos.size());
        if (isNew)
            infos.emplace_back();
        return infos[place->second];
    }
};

namespace {

/* Finds the inline objects of one module. */
class BuiltinSearch {
public:
    BuiltinSearch(AsnModule *module, ObjClassList *found) : module_(module), found_(found) {}

    void run() {
        forEachObject(module_, [&](AsnObject *object, int) {
            visitFields(object, 0);
            registerAll();
        });
        forEachObjectSet(module_, [&](AsnObjectSet *objectSet, int) {
            forObjectSet(objectSet, [&](AsnObjectSet *, AsnObject *object, int) {
                noteIfBuiltin(object, false, 0);
            });
            registerAll();
        });
    }

private:
    struct Met {
        BuiltinObjInfo info;
        int depth;
    };

    /* Collects the inline objects that stand in the fields of an object. */
    void visitFields(AsnObject *object, int depth) {
        forEachPossibleObjectFieldValue(object, [&](AsnObject *, AsnFieldValue *value, int) {
            if (isEmptyFieldValue(value))
                return;
            const bool skipped = testOptionOf(value->field, OPT_SKIPPED);
            forObjectFieldValue(value, [&](AsnFieldValue *, AsnObject *inner) {
                noteIfBuiltin(inner, skipped, depth);
            });
            visitSetField(value, skipped, depth);
        });
    }

    /* A set is walked once, however many objects name it. */
    void visitSetField(AsnFieldValue *value, bool skipped, int depth) {
        const NodePlace place = findFieldSetConstraint(value);
        if (place.nr == 0)
            return;
        const auto added = builtinsOfSets_.try_emplace(place);
        std::vector<RecNr> &builtins = added.first->second;
        if (added.second)
            forObjectsOfConstraint(place, false, [&](AsnObject *inner, int) {
                if (isBuiltin(inner))
                    builtins.push_back(inner->posRecord);
            });
        for (RecNr nr : builtins)
            met_.push_back({{nr, skipped}, depth});
    }

    /* An object of another module has its row, if any, in the tables of that module. */
    bool isBuiltin(AsnObject *object) const {
        return !isDefinedBaseObject(object) && object->posModule == module_->modRec;
    }

    void noteIfBuiltin(AsnObject *object, bool skipped, int depth) {
        if (isBuiltin(object))
            met_.push_back({{object->posRecord, skipped}, depth});
    }

    /* Registers what was met, each object in front of those inside it. Objects that hold each other
       cost no stack. */
    void registerAll() {
        std::vector<Met> open;
        takeMet(&open);
        while (!open.empty()) {
            const Met next = open.back();
            open.pop_back();
            if (next.depth > MAX_NESTING)
                treeInconsistent(module_->modRec);
            forObjectByRecNr(
                module_,
                [&](AsnObject *object, int) {
                    found_->of(object->governor).builtin.push_back(next.info);
                    visitFields(object, next.depth + 1);
                },
                next.info.posRecord);
            takeMet(&open);
        }
    }

    void takeMet(std::vector<Met> *open) {
        open->insert(open->end(), met_.rbegin(), met_.rend());
        met_.clear();
    }

    AsnModule *module_;
    ObjClassList *found_;
    std::vector<Met> met_; /* in the object or set that is being visited, in order */
    std::unordered_map<NodePlace, std::vector<RecNr>, PlaceHash> builtinsOfSets_;
};

/* Shows the objects of one class. */
class ClassPass {
public:
    ClassPass(AsnModule *module, ClassPrefixCall prefixFunc, ClassObjectCall objectFunc,
              ClassPostfixCall postfixFunc)
        : module_(module), prefixFunc_(prefixFunc), objectFunc_(objectFunc),
          postfixFunc_(postfixFunc) {}

    /* `builtinsBehindFirst`: the first object precedes those that are written inline. */
    void run(const ObjClassInfo &info, bool builtinsBehindFirst) {
        const bool hasDefined = !info.defined.empty();
        const RecNr first = hasDefined ? info.defined.front() : info.builtin.front().posRecord;
        forObjectByRecNr(
            module_, [&](AsnObject *object, int) { runOnClass(object, info, builtinsBehindFirst); },
            first);
    }

private:
    void runOnClass(AsnObject *first, const ObjClassInfo &info, bool builtinsBehindFirst) {
        objClass_ = first->governor;
        skipped_ = testOptionOf(objClass_, OPT_SKIPPED);
        tableIndex_ = 0;
        if (prefixFunc_)
            prefixFunc_(objClass_, skipped_);
        const std::size_t inFront = builtinsBehindFirst ? 1 : 0;
        for (std::size_t i = 0; i < inFront; ++i)
            show(info.defined[i], false);
        for (const BuiltinObjInfo &builtin : info.builtin)
            show(builtin.posRecord, builtin.skipped);
        for (std::size_t i = inFront; i < info.defined.size(); ++i) {
            if (i + 1 < info.defined.size())
                prefetchVNodes(module_->modRec, info.defined[i + 1]);
            show(info.defined[i], false);
        }
        if (postfixFunc_)
            postfixFunc_(objClass_, tableIndex_, skipped_);
    }

    void show(RecNr nr, bool fieldSkipped) {
        const bool skipped = skipped_ || fieldSkipped;
        if (objectFunc_)
            forObjectByRecNr(
                module_,
                [&](AsnObject *object, int) {
                    objectFunc_(objClass_, object, tableIndex_, skipped);
                },
                nr);
        if (!skipped)
            ++tableIndex_;
    }

    AsnModule *module_;
    ClassPrefixCall prefixFunc_;
    ClassObjectCall objectFunc_;
    ClassPostfixCall postfixFunc_;
    AsnObjClass *objClass_ = nullptr;
    bool skipped_ = false;
    int tableIndex_ = 0;
};

/* Adds the inline objects to their classes. Classes without an object of their own come last. */
void addBuiltins(ObjClassList *classes, ObjClassList &&builtins) {
    std::vector<const NodePlace *> keys(builtins.infos.size());
    for (const auto &[key, place] : builtins.index)
        keys[place] = &key;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto [place, isNew] = classes->index.try_emplace(*keys[i], classes->infos.size());
        if (isNew)
            classes->infos.emplace_back();
        classes->infos[place->second].builtin = std::move(builtins.infos[i].builtin);
    }
}

using ObjectOrder = std::shared_ptr<const ObjClassList>;

ObjectOrder makeOrder(AsnModule *module, bool withBuiltins) {
    ObjClassList builtins;
    if (withBuiltins)
        BuiltinSearch(module, &builtins).run();
    const auto classes = std::make_shared<ObjClassList>();
    forEachObject(module, [&](AsnObject *object, int) {
        classes->of(object->governor).defined.push_back(object->posRecord);
    });
    addBuiltins(classes.get(), std::move(builtins));
    return classes;
}

/* The order is the same in all passes. */
ObjectOrder orderOf(AsnModule *module, bool withBuiltins) {
    if (!withBuiltins)
        return makeOrder(module, false);
    ObjectOrder &known = module->modRec->objectOrder;
    if (known == nullptr)
        known = makeOrder(module, true);
    return known;
}

} // namespace

void forEachObjectInClassOrder(AsnModule *module, ClassPrefixCall prefixFunc,
                               ClassObjectCall objectFunc, ClassPostfixCall postfixFunc,
                               bool withBuiltins) {
    if (!prefixFunc && !objectFunc && !postfixFunc)
        fatalError(FATAL_NO_CALLBACK, nullptr);
    const ObjectOrder order = orderOf(module, withBuiltins);
    ClassPass pass(module, prefixFunc, objectFunc, postfixFunc);
    for (std::size_t i = 0; i < order->infos.size(); ++i) {
        /* Inline objects of a class follow the module's very first object if that is of this class;
           in any other class they come first. */
        const bool ownsFirstObject = i == 0 && !order->infos[i].defined.empty();
        pass.run(order->infos[i], ownsFirstObject);
    }
}
