#include "asntree/instances.h"

#include "asntree/names.h"

namespace asntree {

namespace {

/* Beyond these an instantiation has no end. */
constexpr int MAX_INSTANCE_DEPTH = 100;
constexpr int ENDLESS_DEPTH = 20; /* so deep lies only what makes itself again */
constexpr std::size_t MAX_KEY_LENGTH = 1u << 16;

/* Instances that make further ones may come to numbers beyond all bounds without going deep. What all
   of them may cost is measured by the text; the cost is the more the deeper they lie in others. */
constexpr std::size_t INSTANCE_COST = 100;
constexpr std::size_t FREE_COST = 4'000'000;
constexpr std::size_t COST_OF_OCTET = 50;

bool isTooMuch(Compilation &c, const Instance &instance, int depth) {
    c.instanceCost += (INSTANCE_COST + instance.key.size()) * static_cast<std::size_t>(depth + 1);
    if (c.instanceCost <= FREE_COST)
        return false;
    if (c.instanceCostAllowed == 0) {
        c.instanceCostAllowed = FREE_COST;
        for (const SourceFile &file : c.sources.files)
            c.instanceCostAllowed += COST_OF_OCTET * file.text.size();
    }
    return c.instanceCost > c.instanceCostAllowed;
}

const Argument *dummy(const Scope *scope, std::string_view name) {
    if (scope->definition == nullptr)
        return nullptr;
    for (std::size_t i = 0; i < scope->arguments.size(); ++i)
        if (scope->definition->parameters[i].name.text == name)
            return &scope->arguments[i];
    return nullptr;
}

/* The text of an actual parameter with the keys of arguments in place of dummy references. A
   parameter that is a dummy reference and nothing else has the key of its argument, so that a
   definition that instantiates itself with its own parameters comes back to the same instance. */
std::string keyOf(Compilation &c, TokenRange range, const Scope *caller) {
    const SourceFile &file = c.sources[range.file];
    if (range.end == range.begin + 1)
        if (const Argument *argument = dummy(caller, textOf(file, file.tokens[range.begin])))
            return argument->key;
    std::string key = std::to_string(caller->module->number) + ':';
    for (std::uint32_t i = range.begin; i < range.end && key.size() <= MAX_KEY_LENGTH; ++i) {
        const std::string_view text = textOf(file, file.tokens[i]);
        const Argument *argument = dummy(caller, text);
        if (argument != nullptr)
            key.append("<").append(argument->key).append(">");
        else
            key.append(text);
        key += ' ';
    }
    return key;
}

void readArgument(Compilation &c, Argument &argument, const FormalParameter &parameter,
                  TokenRange range, const Scope *instance) {
    ParseContext parsing = c.parsing();
    const bool upper = !parameter.name.text.empty() && parameter.name.text[0] >= 'A' &&
                       parameter.name.text[0] <= 'Z';
    if (parameter.governor == nullptr) {
        argument.type = readType(parsing, range);
        if (argument.type != nullptr)
            argument.kind = classOf(c, {argument.type, argument.scope}) ? ArgumentKind::Class
                                                                        : ArgumentKind::Type;
        return;
    }
    argument.governor = {parameter.governor, instance};
    const bool ofClass = bool(classOf(c, argument.governor));
    if (upper) {
        argument.set = readBracedSet(parsing, range);
        if (argument.set != nullptr)
            argument.kind = ofClass ? ArgumentKind::ObjectSet : ArgumentKind::ValueSet;
    } else {
        argument.value = readValue(parsing, range);
        if (argument.value != nullptr)
            argument.kind = ofClass ? ArgumentKind::Object : ArgumentKind::Value;
    }
}

Place placeOf(Compilation &c, TokenRange range, Place otherwise) {
    if (!range.given() || range.empty())
        return otherwise;
    return {range.file, c.sources[range.file].tokens[range.begin].offset};
}

bool countIsRight(Compilation &c, const Assignment *definition, const Reference &reference,
                  bool quiet) {
    const std::size_t wanted = definition->parameters.size();
    const std::size_t given = reference.parameters.size();
    if (wanted == given)
        return true;
    if (!quiet)
        error(c.diagnostics, reference.name.place,
              "`" + std::string(definition->name.text) + "` has " + std::to_string(wanted) +
                  (wanted == 1 ? " parameter, " : " parameters, ") + std::to_string(given) +
                  (given == 1 ? " is given" : " are given"),
              {{definition->name.place, "defined here"}});
    return false;
}

} // namespace

const Scope *instantiate(Compilation &c, const Assignment *definition, const Reference &reference,
                         const Scope *caller, bool quiet) {
    if (!countIsRight(c, definition, reference, quiet))
        return nullptr;
    Instance instance{definition, {}};
    std::vector<std::string> keys;
    for (const TokenRange &range : reference.parameters) {
        keys.push_back(keyOf(c, range, caller));
        instance.key.append(keys.back()).append(",");
    }
    if (auto found = c.instances.find(instance); found != c.instances.end())
        return found->second.get();
    if (caller->depth >= MAX_INSTANCE_DEPTH || instance.key.size() > MAX_KEY_LENGTH ||
        isTooMuch(c, instance, caller->depth)) {
        c.uncheckedInstances.clear(); /* they would come to the same end */
        error(c.diagnostics, definition->name.place,
              "`" + std::string(definition->name.text) +
                  (caller->depth >= ENDLESS_DEPTH
                       ? "` is instantiated without end, each time with other parameters"
                       : "` and others make more instances of one another than can be"));
        return nullptr;
    }
    auto scope = std::make_unique<Scope>();
    scope->module = moduleOf(c, definition);
    scope->definition = definition;
    scope->key = instance.key;
    scope->depth = caller->depth + 1;
    scope->arguments.resize(keys.size());
    const Scope *result = scope.get();
    Scope *made = scope.get();
    c.instances.emplace(std::move(instance), std::move(scope));
    c.uncheckedInstances.push_back(result);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        Argument &argument = made->arguments[i];
        argument.scope = caller;
        argument.key = std::move(keys[i]);
        argument.place = placeOf(c, reference.parameters[i], reference.name.place);
    }
    for (const bool governed : {false, true}) /* a governor may be a parameter behind it */
        for (std::size_t i = 0; i < made->arguments.size(); ++i)
            if ((definition->parameters[i].governor != nullptr) == governed)
                readArgument(c, made->arguments[i], definition->parameters[i],
                             reference.parameters[i], result);
    return result;
}

} // namespace asntree
