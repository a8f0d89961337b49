#include <cstdio>

#include "tests/support/treewriter.h"

/* Writes the tree of messages.asn: makemessages FILE. */

namespace {

TypeNode octets(TreeWriter &w) {
    return w.string(TYP_OCTSTR, 0, 40);
}

TypeNode number(TreeWriter &w) {
    return w.integer(INT32_MIN, INT32_MAX);
}

void makeHints(TreeWriter &w) {
    std::vector<TypeNode> hints;
    for (const char *name : {"title", "given", "family", "street", "town", "region", "country",
                             "phone", "mail", "company", "division", "room"})
        hints.push_back(w.comp(name, w.string(TYP_IA5STR, 1, 32))
                            .implicit(static_cast<int>(hints.size()))
                            .optional());
    w.define("Hints", w.structure(TYP_SEQ, hints));
}

void makeFilter(TreeWriter &w) {
    w.define("Filter", w.choice({w.comp("every", w.ref("Terms")).implicit(0),
                                 w.comp("some", w.ref("Terms")).implicit(1),
                                 w.comp("none", w.null()).implicit(2)}));
    w.define("Terms", w.listOf(TYP_SEQOF, w.ref("Term"), 1, 4).asArray());
    w.define("Term", w.choice({w.comp("equal", w.ref("Pair")).implicit(3),
                               w.comp("part", w.ref("Part")).implicit(4),
                               w.comp("present", octets(w)).implicit(7)}));
    w.define("Pair", w.sequence({w.comp("name", octets(w)), w.comp("text", octets(w))}));
    TypeNode pieces = w.listOf(TYP_SEQOF, w.ref("Piece"), 1, 3).asArray();
    w.define("Part", w.sequence({w.comp("name", octets(w)), w.comp("pieces", pieces)}));
    w.define("Piece", w.choice({w.comp("first", octets(w)).implicit(0),
                                w.comp("middle", octets(w)).implicit(1),
                                w.comp("final", octets(w)).implicit(2)}));
}

void makeSearch(TreeWriter &w) {
    TypeNode find = w.comp("find", w.ref("Find")).application(13);
    TypeNode operation = w.choice({find, w.comp("stop", w.null()).application(14)});
    w.define("Search", w.sequence({w.comp("number", w.integer(0, INT32_MAX)),
                                   w.comp("operation", operation)}))
        .entry();
    w.define("Find",
             w.sequence({w.comp("base", w.string(TYP_OCTSTR, 0, 100)),
                         w.comp("scope", w.enumerated({{"here", 0}, {"below", 1}, {"all", 2}})),
                         w.comp("limit", w.integer(0, INT32_MAX)),
                         w.comp("filter", w.ref("Filter")), w.comp("hints", w.ref("Hints"))}));
    makeFilter(w);
    makeHints(w);
}

void makeLevels(TreeWriter &w) {
    for (int i = 1; i <= 24; ++i) {
        TypeNode deeper = i == 1 ? w.integer(0, 255) : w.ref("Level" + std::to_string(i - 1));
        w.define("Level" + std::to_string(i), w.choice({w.comp("deeper", deeper).explicitly(0),
                                                        w.comp("truth", w.boolean()).implicit(1)}))
            .entry();
    }
}

/* What has no bound, held dynamically. */
TypeNode text(TreeWriter &w) {
    return w.string(TYP_OCTSTR);
}

TypeNode list(TreeWriter &w, TypeNode element) {
    return w.listOf(TYP_SEQOF, element).asList();
}

TypeNode set(TreeWriter &w, TypeNode element) {
    return w.listOf(TYP_SETOF, element).asList();
}

void makeSearchRequest(TreeWriter &w) {
    TypeNode scope = w.enumerated({{"baseObject", 0}, {"singleLevel", 1}, {"wholeSubtree", 2}});
    TypeNode aliases =
        w.enumerated({{"never", 0}, {"inSearching", 1}, {"findingBaseObj", 2}, {"always", 3}});
    w.define(
        "SearchRequest",
        w.sequence({w.comp("baseObject", text(w)), w.comp("scope", scope),
                    w.comp("derefAliases", aliases), w.comp("sizeLimit", w.integer(0, INT32_MAX)),
                    w.comp("timeLimit", w.integer(0, INT32_MAX)), w.comp("typesOnly", w.boolean()),
                    w.comp("filter", w.ref("DirectoryFilter")),
                    w.comp("attributes", list(w, text(w)))}));
    TypeNode filters = set(w, w.ref("DirectoryFilter")), others = set(w, w.ref("DirectoryFilter"));
    TypeNode inverse = w.comp("not", w.ref("DirectoryFilter")).explicitly(2).option(OPT_POINTER);
    w.define("DirectoryFilter",
             w.choice({w.comp("and", filters).implicit(0), w.comp("or", others).implicit(1),
                       inverse, w.comp("equalityMatch", w.ref("Assertion")).implicit(3),
                       w.comp("substrings", w.ref("Substrings")).implicit(4),
                       w.comp("greaterOrEqual", w.ref("Assertion")).implicit(5),
                       w.comp("lessOrEqual", w.ref("Assertion")).implicit(6),
                       w.comp("present", text(w)).implicit(7)}));
    w.define("Assertion",
             w.sequence({w.comp("attributeDesc", text(w)), w.comp("assertionValue", text(w))}));
    TypeNode piece =
        w.choice({w.comp("initial", text(w)).implicit(0), w.comp("any", text(w)).implicit(1),
                  w.comp("final", text(w)).implicit(2)});
    w.define("Substrings",
             w.sequence({w.comp("type", text(w)), w.comp("substrings", list(w, piece))}));
}

void makeDirectory(TreeWriter &w) {
    TypeNode request = w.comp("searchRequest", w.ref("SearchRequest")).application(3);
    TypeNode entry = w.comp("searchResEntry", w.ref("SearchResultEntry")).application(4);
    TypeNode done = w.comp("searchResDone", w.ref("Result")).application(5);
    TypeNode controls = list(w, w.ref("Control"));
    w.define("Directory", w.sequence({w.comp("messageID", w.integer(0, INT32_MAX)),
                                      w.comp("protocolOp", w.choice({request, entry, done})),
                                      w.comp("controls", controls).implicit(0).optional()}));
    w.define("Found", w.ref("Directory")).entry();
    w.define("Asked", w.ref("Directory")).entry();
    makeSearchRequest(w);
    w.define("SearchResultEntry", w.sequence({w.comp("objectName", text(w)),
                                              w.comp("attributes", list(w, w.ref("Attribute")))}));
    w.define("Attribute", w.sequence({w.comp("type", text(w)), w.comp("vals", set(w, text(w)))}));
    w.define("Result", w.sequence({w.comp("resultCode", w.integer(0, 127)),
                                   w.comp("matchedDN", text(w)), w.comp("diagnostic", text(w))}));
    w.define("Control",
             w.sequence({w.comp("controlType", text(w)),
                         w.comp("criticality", w.boolean()).defaultTo(w.boolValue(false)),
                         w.comp("controlValue", text(w)).optional()}));
}

void makeCertificate(TreeWriter &w) {
    w.define("Certificate", w.sequence({w.comp("tbsCertificate", w.ref("TBSCertificate")),
                                        w.comp("signatureAlgorithm", w.ref("AlgorithmIdentifier")),
                                        w.comp("signature", w.string(TYP_BITSTR))}))
        .entry();
    TypeNode validity =
        w.sequence({w.comp("notBefore", w.ref("Time")), w.comp("notAfter", w.ref("Time"))});
    TypeNode key = w.sequence({w.comp("algorithm", w.ref("AlgorithmIdentifier")),
                               w.comp("subjectPublicKey", w.string(TYP_BITSTR))});
    TypeNode version = w.comp("version", w.integer(0, 2)).explicitly(0);
    w.define(
        "TBSCertificate",
        w.sequence({version.defaultTo(w.intValue(0)),
                    w.comp("serialNumber", w.integer().option(OPT_FRAME)),
                    w.comp("signature", w.ref("AlgorithmIdentifier")),
                    w.comp("issuer", w.ref("Name")), w.comp("validity", validity),
                    w.comp("subject", w.ref("Name")), w.comp("subjectPublicKeyInfo", key),
                    w.comp("extensions", list(w, w.ref("Extension"))).explicitly(3).optional()}));
    w.define("AlgorithmIdentifier", w.sequence({w.comp("algorithm", w.type(TYP_OBJID)),
                                                w.comp("parameters", w.any()).optional()}));
    TypeNode pair = w.sequence({w.comp("type", w.type(TYP_OBJID)), w.comp("value", w.any())});
    w.define("Name", list(w, set(w, pair)));
    w.define("Time", w.choice({w.comp("utcTime", w.type(TYP_UTCTIME)),
                               w.comp("generalTime", w.type(TYP_GENTIME))}));
    w.define("Extension", w.sequence({w.comp("extnID", w.type(TYP_OBJID)),
                                      w.comp("critical", w.boolean()).defaultTo(w.boolValue(false)),
                                      w.comp("extnValue", text(w))}));
}

} // namespace

int main(int argc, char **argv) {
    TreeWriter w("Measured_Messages", "bench");
    w.option("-COD=1:1");
    w.option("-DEFINITELEN=definite");
    w.define("Small", w.sequence({
                          w.comp("id", w.integer(0, 255)),
                          w.comp("name", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional(),
                          w.comp("ok", w.boolean()),
                      }))
        .entry();
    w.define("Numbers", w.listOf(TYP_SEQOF, number(w), 0, 1000).asArray()).entry();
    w.define("Chain", w.listOf(TYP_SEQOF, number(w)).asList()).entry();
    makeSearch(w);
    makeLevels(w);
    makeDirectory(w);
    makeCertificate(w);
    if (argc == 2 && w.save(argv[1]))
        return 0;
    std::fputs("usage: makemessages FILE\n", stderr);
    return 1;
}
