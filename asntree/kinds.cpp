#include "asntree/kinds.h"

#include <iterator>

namespace asntree {

namespace {

constexpr BuiltinKind kinds[] = {
    {TypeKind::Boolean, "BOOLEAN", 1, TYP_BOOLEAN},
    {TypeKind::Integer, "INTEGER", 2, TYP_INTEGER},
    {TypeKind::Enumerated, "ENUMERATED", 10, TYP_ENUM},
    {TypeKind::Real, "REAL", 9, TYP_REAL},
    {TypeKind::BitString, "BIT STRING", 3, TYP_BITSTR},
    {TypeKind::OctetString, "OCTET STRING", 4, TYP_OCTSTR},
    {TypeKind::Null, "NULL", 5, TYP_NULL},
    {TypeKind::Sequence, "SEQUENCE", 16, TYP_SEQ},
    {TypeKind::SequenceOf, "SEQUENCE OF", 16, TYP_SEQOF},
    {TypeKind::Set, "SET", 17, TYP_SET},
    {TypeKind::SetOf, "SET OF", 17, TYP_SETOF},
    {TypeKind::Choice, "CHOICE", 0, TYP_CHOICE},
    {TypeKind::Any, "ANY", 0, TYP_ANY},
    {TypeKind::EmbeddedPdv, "EMBEDDED PDV", 11, TYP_SEQ, true},
    {TypeKind::ObjectIdentifier, "OBJECT IDENTIFIER", 6, TYP_OBJID},
    {TypeKind::RelativeOid, "RELATIVE-OID", 13, TYP_OCTSTR, true},
    {TypeKind::OidIri, "OID-IRI", 35, TYP_OCTSTR, true},
    {TypeKind::RelativeOidIri, "RELATIVE-OID-IRI", 36, TYP_OCTSTR, true},
    {TypeKind::Utf8String, "UTF8String", 12, TYP_OCTSTR, true},
    {TypeKind::NumericString, "NumericString", 18, TYP_NUMSTR},
    {TypeKind::PrintableString, "PrintableString", 19, TYP_PRISTR},
    {TypeKind::TeletexString, "TeletexString", 20, TYP_TELSTR},
    {TypeKind::VideotexString, "VideotexString", 21, TYP_VIDSTR},
    {TypeKind::VisibleString, "VisibleString", 26, TYP_VISSTR},
    {TypeKind::Ia5String, "IA5String", 22, TYP_IA5STR},
    {TypeKind::GraphicString, "GraphicString", 25, TYP_GRASTR},
    {TypeKind::GeneralString, "GeneralString", 27, TYP_GENSTR},
    {TypeKind::BmpString, "BMPString", 30, TYP_BMPSTR},
    {TypeKind::UniversalString, "UniversalString", 28, TYP_UNISTR},
    {TypeKind::CharacterString, "CHARACTER STRING", 29, TYP_SEQ, true},
    {TypeKind::GeneralizedTime, "GeneralizedTime", 24, TYP_GENTIME},
    {TypeKind::UtcTime, "UTCTime", 23, TYP_UTCTIME},
    {TypeKind::Time, "TIME", 14, TYP_OCTSTR, true},
    {TypeKind::Date, "DATE", 31, TYP_OCTSTR, true},
    {TypeKind::TimeOfDay, "TIME-OF-DAY", 32, TYP_OCTSTR, true},
    {TypeKind::DateTime, "DATE-TIME", 33, TYP_OCTSTR, true},
    {TypeKind::Duration, "DURATION", 34, TYP_OCTSTR, true},
    {TypeKind::External, "EXTERNAL", 8, TYP_EXTERNAL_1994},
    {TypeKind::ObjectDescriptor, "ObjectDescriptor", 7, TYP_OBJDESCR},
    {TypeKind::InstanceOf, "INSTANCE OF", 8, TYP_EXTERNAL_1994},
};

constexpr bool areInOrder() {
    for (std::size_t i = 0; i < std::size(kinds); ++i)
        if (kinds[i].kind != static_cast<TypeKind>(i))
            return false;
    return true;
}
static_assert(areInOrder());

} // namespace

const BuiltinKind *builtinKind(TypeKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < std::size(kinds) ? &kinds[index] : nullptr;
}

std::string_view kindText(TypeKind kind) {
    if (const BuiltinKind *const row = builtinKind(kind))
        return row->text;
    return kind == TypeKind::Field ? "an open type" : "a type";
}

bool isOpen(TypeKind kind) {
    return kind == TypeKind::Any || kind == TypeKind::Field;
}

bool isCharacterString(TypeKind kind) {
    return (kind >= TypeKind::Utf8String && kind <= TypeKind::CharacterString) ||
           kind == TypeKind::ObjectDescriptor;
}

bool isTime(TypeKind kind) {
    return kind >= TypeKind::GeneralizedTime && kind <= TypeKind::Duration;
}

bool isIsoTime(TypeKind kind) {
    return isTime(kind) && kind != TypeKind::GeneralizedTime && kind != TypeKind::UtcTime;
}

} // namespace asntree
