#include "asntree/directives.h"

#include "asntree/names.h"
#include "asntree/naming.h"
#include "asntree/references.h"

namespace asntree {

namespace {

/* What a directive can be said of. */
struct Item {
    const void *key = nullptr;
    TypeUse type; /* of the item, no type for classes, values and objects; the scope is null in
                     parameterized definitions */
    const ObjectClass *objectClass = nullptr;
    const Assignment *definition = nullptr; /* null: a part of one */
    const char *mismatch = nullptr;         /* why a path ended here */
};

struct DirectiveReader {
    Compilation &c;
    Directives &directives;
};

Item itemOfDefinition(Compilation &c, const Assignment &assignment) {
    Item item;
    item.key = &assignment;
    item.definition = &assignment;
    item.objectClass = assignment.objectClass;
    const Scope *scope = assignment.parameterized ? nullptr : &moduleOf(c, &assignment)->root;
    item.type.scope = scope; /* of the fields of a class as well */
    if (assignment.kind == AssignmentKind::Type &&
        (assignment.parameterized || !classOf(c, {assignment.type, scope})))
        item.type.type = assignment.type;
    return item;
}

Item itemOfType(const void *key, const Type *type, const Scope *scope) {
    Item item;
    item.key = key;
    item.type = {type, scope};
    return item;
}

/* A field of objects has no type. */
Item itemOfField(Compilation &c, const ClassField &field, const Scope *scope) {
    const bool ofObjects = field.governor != nullptr && scope != nullptr &&
                           classOf(c, {field.governor, scope});
    return itemOfType(&field, ofObjects ? nullptr : field.governor, scope);
}

/* One step of a path: to the element of a list, a component or a field that is written in the item
   itself; what a reference leads to has a path of its own. */
Item step(Compilation &c, const Item &from, const std::string &name) {
    if (from.objectClass != nullptr) {
        for (const ClassField &field : from.objectClass->fields)
            if (field.name.text == name)
                return itemOfField(c, field, from.type.scope);
        return {nullptr, {}, nullptr, nullptr, "the class has no such field"};
    }
    if (!from.type)
        return {nullptr, {}, nullptr, nullptr, "it has no parts"};
    const Type &type = *from.type.type;
    if (name == "*")
        return type.element != nullptr && type.kind != TypeKind::Selection
                   ? itemOfType(type.element, type.element, from.type.scope)
                   : Item{nullptr, {}, nullptr, nullptr, "it is no list"};
    for (const Component &component : type.components)
        if (component.type != nullptr && component.name.text == name)
            return itemOfType(&component, component.type, from.type.scope);
    return {nullptr, {}, nullptr, nullptr,
            type.kind == TypeKind::Reference
                ? "it is a reference; say it of the definition that it names"
                : "it has no such part"};
}

/* --- does a word fit --- */

bool isString(TypeKind kind) {
    return kind == TypeKind::BitString || kind == TypeKind::OctetString ||
           (kind >= TypeKind::Utf8String && kind <= TypeKind::CharacterString) ||
           kind == TypeKind::ObjectDescriptor;
}

bool isList(TypeKind kind) {
    return kind == TypeKind::SequenceOf || kind == TypeKind::SetOf;
}

bool isStructure(TypeKind kind) {
    return kind == TypeKind::Sequence || kind == TypeKind::Set || kind == TypeKind::Choice;
}

/* What a word may be said of, null if it fits. */
const char *misfit(WordKind word, const Item &item, TypeKind kind) {
    switch (word) {
    case WordKind::Int:
        return kind == TypeKind::Integer ? nullptr : "an INTEGER";
    case WordKind::Real:
        return kind == TypeKind::Real ? nullptr : "a REAL";
    case WordKind::List:
        return isList(kind) ? nullptr : "a SEQUENCE OF or SET OF";
    case WordKind::String:
        return isString(kind) ? nullptr : "a string";
    case WordKind::Limit:
        return isString(kind) || isList(kind) ? nullptr : "a string or list";
    case WordKind::Extensions:
        return isStructure(kind) ? nullptr : "a SEQUENCE, SET or CHOICE";
    case WordKind::Any:
        return kind == TypeKind::Any ? nullptr : "an ANY";
    case WordKind::Entry:
        return item.definition != nullptr && item.type ? nullptr : "the definition of a type";
    default:
        return nullptr;
    }
}

/* What a reference leaves to the definition that it names. */
bool speaksOfForm(WordKind word) {
    return word == WordKind::Int || word == WordKind::Real || word == WordKind::List ||
           word == WordKind::String || word == WordKind::Frame || word == WordKind::Extensions;
}

void checkFit(DirectiveReader &reader, const Item &item, const Words &words) {
    const bool named = item.definition != nullptr || (item.type && item.type.scope != nullptr);
    const bool open = item.definition != nullptr && item.definition->parameterized;
    const TypeUse base = item.type && item.type.scope != nullptr && !open
                             ? baseOf(reader.c, item.type)
                             : TypeUse{};
    const TypeKind kind = base ? base.type->kind : TypeKind::Bad;
    const bool isReference = item.type && item.type.type->kind == TypeKind::Reference;
    for (const GivenWord &word : words.given) {
        const char *wanted = named && !open ? misfit(word.kind, item, kind) : nullptr;
        if (wanted != nullptr)
            error(reader.c.diagnostics, word.place,
                  "`" + word.text + "` can only be said of " + wanted);
        else if (isReference && speaksOfForm(word.kind))
            error(reader.c.diagnostics, word.place,
                  "`" + word.text + "` can't be said of a reference; say it of the definition that `" +
                      std::string(item.type.type->ref.name.text) + "` names");
    }
}

void take(DirectiveReader &reader, const Item &item, std::string_view text, Place place) {
    if (readWords(text, place, reader.c.diagnostics, reader.directives.words[item.key]))
        checkFit(reader, item, reader.directives.words[item.key]);
}

/* Goes along a path; null, after a message at `place`, if it names nothing. */
Item walk(DirectiveReader &reader, Item item, const std::vector<std::string> &path,
          std::size_t first, Place place) {
    for (std::size_t i = first; i < path.size() && item.key != nullptr; ++i) {
        item = step(reader.c, item, path[i]);
        if (item.key == nullptr)
            error(reader.c.diagnostics, place,
                  "the path names nothing at `" + path[i] + "`: " + item.mismatch);
    }
    return item;
}

/* --- comments --- */

void takeComment(DirectiveReader &reader, const Item &item, std::uint32_t file,
                 std::uint32_t number) {
    const Directive &directive = reader.c.sources[file].directives[number];
    const Place place{file, directive.offset};
    std::vector<std::string> path;
    std::size_t length = 0;
    std::string_view words = directive.words;
    if (!readItemPath(words, path, length)) {
        error(reader.c.diagnostics, {file, directive.offset + static_cast<std::uint32_t>(length)},
              "this is no path of components and `*`");
        return;
    }
    const Item target = walk(reader, item, path, 0, place);
    if (target.key == nullptr)
        return;
    words.remove_prefix(length);
    const std::size_t blank = std::min(words.find_first_not_of(" \t"), words.size());
    words.remove_prefix(blank);
    take(reader, target, words,
         {file, directive.offset + static_cast<std::uint32_t>(length + blank)});
}

void takeComments(DirectiveReader &reader, const Item &item, std::uint32_t file,
                  const std::vector<std::uint32_t> &numbers) {
    for (std::uint32_t number : numbers)
        takeComment(reader, item, file, number);
}

void takeOfType(DirectiveReader &reader, const Type &type, const Scope *scope,
                std::uint32_t file) {
    for (const Component &component : type.components) {
        if (component.type == nullptr)
            continue;
        takeComments(reader, itemOfType(&component, component.type, scope), file,
                     component.directives);
        takeOfType(reader, *component.type, scope, file);
    }
    if (type.element == nullptr || type.kind == TypeKind::Selection)
        return;
    takeComments(reader, itemOfType(type.element, type.element, scope), file,
                 type.element->directives);
    takeOfType(reader, *type.element, scope, file);
}

void takeOfDefinition(DirectiveReader &reader, const Assignment &assignment) {
    const std::uint32_t file = assignment.module->file;
    const Item item = itemOfDefinition(reader.c, assignment);
    takeComments(reader, item, file, assignment.directives);
    if (assignment.objectClass != nullptr)
        for (const ClassField &field : assignment.objectClass->fields)
            takeComments(reader, itemOfField(reader.c, field, item.type.scope), file,
                         field.directives);
    if (item.type)
        takeOfType(reader, *item.type.type, item.type.scope, file);
}

/* --- lines of option files --- */

void takeLine(DirectiveReader &reader, const PathDirective &line) {
    const std::string &text = line.path[0];
    auto modules = reader.c.modulesByName.find(text);
    if (modules == reader.c.modulesByName.end()) {
        error(reader.c.diagnostics, line.pathPlace,
              "the path names nothing: there is no module `" + text + "`");
        return;
    }
    const ModuleInfo &module = *modules->second.front();
    auto definition = module.names.find(line.path[1]);
    if (definition == module.names.end()) {
        error(reader.c.diagnostics, line.pathPlace,
              "the path names nothing: module `" + text + "` does not define `" + line.path[1] +
                  "`");
        return;
    }
    const Item item = walk(reader, itemOfDefinition(reader.c, *definition->second), line.path, 2,
                           line.pathPlace);
    if (item.key != nullptr)
        take(reader, item, line.words, line.wordsPlace);
}

void reportUnclaimed(Compilation &c) {
    for (const SourceFile &file : c.sources.files)
        for (const Directive &directive : file.directives)
            if (!directive.taken)
                error(c.diagnostics, {file.number, directive.offset},
                      "this directive stands behind no definition, component, field or element");
}

} // namespace

void takeDirectives(Compilation &c, const Settings &settings, Directives &directives) {
    DirectiveReader reader{c, directives};
    for (const auto &info : c.modules)
        for (const Assignment *assignment : info->syntax->assignments)
            takeOfDefinition(reader, *assignment);
    for (const PathDirective &line : settings.directives)
        takeLine(reader, line);
    reportUnclaimed(c);
}

const Words *wordsFor(const Directives &directives, const void *item) {
    auto found = directives.words.find(item);
    return found == directives.words.end() ? nullptr : &found->second;
}

DefinitionWords definitionWords(Compilation &c, const Directives &directives) {
    DefinitionWords result;
    if (directives.words.empty())
        return result;
    for (const auto &info : c.modules)
        for (const Assignment *assignment : info->syntax->assignments) {
            const Words *words = wordsFor(directives, assignment);
            if (words == nullptr)
                continue;
            if (words->has(WordKind::Entry))
                result.entries.push_back({assignment, words->entryCategories});
            const std::string row(namingPrefix(kindOfDefinition(c, *assignment)));
            const std::pair<const char *, const std::string *> parts[] = {{"CONV=", &words->conv},
                                                                          {"PREF=", &words->prefix},
                                                                          {"NAME=", &words->name},
                                                                          {"SUFF=", &words->suffix}};
            for (const auto &[word, text] : parts)
                if (!text->empty() && !row.empty())
                    result.naming[assignment].push_back("-" + row + word + *text);
        }
    return result;
}

} // namespace asntree
