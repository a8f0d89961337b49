#include "asntree/reservednames.h"

namespace asntree {

namespace {

/* Constants, macros and types, in capitals for the most part. */
constexpr std::string_view capitals =
    "ABSTRACT_SYNTAX AM_FAIL ANY ASNCODEC_MODULE ASNCODG ASNERROR ASNG_DEF ASNG_F ASNG_L "
    "ASNHOME ASNMEM ASNNER_MODULE ASNPER_MODULE ASNTSTG ASNTST_MODULE ASNUTIG ASN_ALT_MAX "
    "ASN_ALT_TAB ASN_ARC ASN_ARC_BITS ASN_BMPCHAR ASN_BMPString ASN_BMPString0 ASN_BMPString16 "
    "ASN_BMPString8 ASN_DECL ASN_DECL_SIZE ASN_FRAME ASN_LEVEL ASN_MAX_LEVELS ASN_MAX_NESTING "
    "ASN_MAX_PATH ASN_MAX_TABPARAMS ASN_MEMORY_LIMIT ASN_NAMED_NUMBER ASN_NR_OF_ERRORS ASN_OK "
    "ASN_PATH_TEXT ASN_REENTRANT ASN_STASTR ASN_STASTR0 ASN_STASTR16 ASN_STASTR8 ASN_TABN "
    "ASN_TABPARAM ASN_TABREF ASN_TABTAG ASN_TEST_LEVEL ASN_VALUE_INFO AsnAllocType BIN_ENC BIT "
    "BITL BITSTRING BOOLE BUFSIZ BYTE_TYPE CHAR_BIT CHAR_MAX CHAR_MIN CLOCKS_PER_SEC CLOS_CLOS "
    "CLOS_OPEN COMMONTIME CONSTRAINT_FAIL DATETIMEZ DBL_DIG DBL_EPSILON DBL_MAX DBL_MIN "
    "DEPTH_FAIL DM_FAIL DYNSTR DYNSTR0 DYNSTR16 DYNSTR8 EDOM EILSEQ ENTRYDESCR ENTRYFUNC "
    "ENUM_ERR EOC_FAIL EOC_TAG EOF ERANGE EXIT_FAILURE EXIT_SUCCESS EXTENSIBLE_ENUMERATED "
    "EXTENSIONMARKER EXTERNAL EXTERNAL_1990 EXTERNAL_1994 EXTERNAL_IDENTIFICATION FALSE FILE "
    "FILENAME_MAX FLT_DIG FLT_EPSILON FLT_MAX FLT_MIN FLT_RADIX FOPEN_MAX FORM_FAIL FRAME_PTR "
    "FREE_STG GENERALCHAR GRAPHICCHAR HUGE_VAL IA5CHAR INFINITY INPUT_FAIL INT16_MAX INT16_MIN "
    "INT32_C INT32_MAX INT32_MIN INT64_C INT64_MAX INT64_MIN INT8_MAX INT8_MIN INT_MAX INT_MIN "
    "LACK_OF_MEMORY LEN_FAIL LIST LONG_MAX LONG_MIN MAXLONG MAXREAL MAX_ASN_OBJID_ARCS "
    "MAX_ASN_SET_ELEMS MAX_LONG MB_CUR_MAX MB_STG MINLONG MINREAL MIN_LONG MM_FAIL NAN "
    "NOBODYUSESTHISTYPE NR2_ENC NULL NULLTYPE NUMERICCHAR OBJECTIDENTIFIER OCTET OPENTYPE "
    "OPEN_CLOS OPEN_OPEN PRI8 PRINTABLECHAR RAND_MAX REAL REAL128 REAL32 REAL64 REAL_MINUS_INF "
    "REAL_NORMAL REAL_PLUS_INF REST_FAIL ROOM_FAIL SCHAR_MAX SCHAR_MIN SEEK_CUR SEEK_END "
    "SEEK_SET SHRT_MAX SHRT_MIN SIZE_MAX SKIPPED SKIPPED_ENCOUNTERED T61CHAR TAG TAG8 TAG_APP "
    "TAG_APP8 TAG_CHOICE TAG_CTX TAG_CTX8 TAG_FAIL TAG_PRI TAG_PRI8 TAG_PRV TAG_PRV8 TAG_STR "
    "TAG_STR8 TAG_UNI TAG_UNI8 TCS_CHOICE TCS_COMPOF TCS_FORMAL TCS_HEADER TCS_MANDATORY "
    "TCS_MULTIPLE TCS_OPTIONAL TMP_MAX TRUE TYPE_IDENTIFIER TYP_ABSTR_STX TYP_ANY TYP_BITSTR "
    "TYP_BMPSTR TYP_BOOLEAN TYP_CHASTR TYP_CHOICE TYP_CLASS TYP_EMB_PDV TYP_ENUM "
    "TYP_EXTENSION_MARKER TYP_EXTERNAL TYP_EXTERNAL_1994 TYP_FIELDLIST TYP_GENSTR TYP_GENTIME "
    "TYP_GRASTR TYP_IA5STR TYP_INSTANCE_OF TYP_INTEGER TYP_NONE TYP_NULL TYP_NUMSTR "
    "TYP_OBJDESCR TYP_OBJID TYP_OCTSTR TYP_OPEN TYP_PRISTR TYP_REAL TYP_SELECTION TYP_SEQ "
    "TYP_SEQOF TYP_SET TYP_SETOF TYP_SYNONYM TYP_TELSTR TYP_TYPE_ID TYP_UNISTR TYP_UTCTIME "
    "TYP_VIDSTR TYP_VISSTR UCHAR_MAX UINT16_MAX UINT32_C UINT32_MAX UINT64_C UINT64_MAX "
    "UINT8_MAX UINT_MAX ULONG_MAX UNI8 USHRT_MAX VALUE_FAIL VF_ANY VF_BMPSTR VF_BMPSTR0 "
    "VF_BMPSTR16 VF_BMPSTR8 VF_BOOL VF_COMT VF_DYNS VF_DYNS0 VF_DYNS16 VF_DYNS8 VF_EMB_PDV "
    "VF_EXTERNAL_1990 VF_EXTERNAL_1994 VF_FRM VF_I16 VF_I32 VF_I64 VF_I8 VF_LIST VF_NONE "
    "VF_NULL VF_OBJI VF_OPEN VF_REAL VF_REAL128 VF_REAL32 VF_REAL64 VF_STAS VF_STAS0 VF_STAS16 "
    "VF_STAS8 VF_STRU VF_UI16 VF_UI32 VF_UI64 VF_UI8 VIDEOTEXCHAR VISIBLECHAR";

/* Functions and types of the standard headers and of the run-time layer. */
constexpr std::string_view functions =
    "abort abs alloca asnAllocate asnAppendItem asnAskBegComp asnAskBoolean asnAskCommonTime "
    "asnAskDateTime asnAskDynString asnAskEndAnyChoiceComp asnAskEndComp asnAskExtensionmarker "
    "asnAskExternal1990 asnAskExternal1994 asnAskFrame asnAskNull asnAskObjectIdentifier "
    "asnAskReal128 asnAskReal32 asnAskReal64 asnAskSegments asnAskSint16 asnAskSint32 "
    "asnAskSint64 asnAskSint8 asnAskString asnAskUint16 asnAskUint32 asnAskUint64 asnAskUint8 "
    "asnAskWith asnAskXEnum asnAskedAll asnBeyondSpan asnCloseTester asnCreateHome "
    "asnDecBoolean asnDecCommonTime asnDecDynString asnDecEOC asnDecExtensionmarker "
    "asnDecExternal1990 asnDecExternal1994 asnDecFrameInHand asnDecGeneralizedTime "
    "asnDecNextFrame asnDecNull asnDecObjectIdentifier asnDecReal128 asnDecReal32 asnDecReal64 "
    "asnDecSegments asnDecSint16 asnDecSint32 asnDecSint64 asnDecSint8 asnDecSkip asnDecString "
    "asnDecTagLen asnDecUTCTime asnDecUint16 asnDecUint32 asnDecUint64 asnDecUint8 asnDecXEnum "
    "asnDecodeWith asnDecoded asnEncBoolean asnEncBoolean8 asnEncCommonTime asnEncEOC "
    "asnEncExtensionmarker asnEncExternal1990 asnEncExternal1994 asnEncFrame asnEncFrame0 "
    "asnEncGeneralizedTime asnEncInteger asnEncInteger8 asnEncNull asnEncNull8 "
    "asnEncObjectIdentifier asnEncReal asnEncSegments asnEncSegments8 asnEncString "
    "asnEncString8 asnEncTagIndefLen asnEncTagIndefLen8 asnEncTagLen asnEncTagLen8 "
    "asnEncUTCTime asnEncUnsigned asnEncUnsigned8 asnEncodeNewWith asnEncodeWith asnEncoded "
    "asnErrorName asnFirstElements asnFreeHome asnFreeMemory asnGrowArray asnInfoOfValue "
    "asnLookTagLen asnMemoryOfHome asnNew asnNewFrame asnNewHome asnNewItem asnOpenDecoder "
    "asnOpenEncoder asnOpenTester asnPeekTag asnPopHome asnPopPath asnPriBegComp asnPriBoolean "
    "asnPriCommonTime asnPriDateTime asnPriEndComp asnPriExtensionmarker asnPriExternal1990 "
    "asnPriExternal1994 asnPriFrame asnPriInteger asnPriNull asnPriObjectIdentifier asnPriReal "
    "asnPriSegments asnPriString asnPriUnsigned asnPriXEnum asnPrintWith asnPushElem "
    "asnPushHome asnPushPath asnRaise asnRaiseFatal asnReportError asnSetNamedDef asnSpan0 "
    "asnStoreEOC asncodg_asnuti asncodg_tag asntstg_asnuti assert atexit atof atoi atol bcmp "
    "bcopy bsearch bzero calloc clearerr clock div dprintf errno exit fclose fdopen feof "
    "ferror fflush ffs fgetc fgetpos fgets fileno fopen fprintf fputc fputs fread free freopen "
    "fscanf fseek fsetpos ftell fwrite getc getchar getdelim getenv getline gets index int16_t "
    "int32_t int64_t int8_t isalnum isalpha isdigit isspace jmp_buf labs ldiv listInit longjmp "
    "malloc memchr memcmp memcpy memmove memset mkstemp mktemp mktime offsetof pclose perror "
    "popen printf pselect ptrdiff_t putc putchar putenv puts qsort raise rand random realloc "
    "realpath remove rename rewind rindex scanf select setbuf setenv setjmp setvbuf signal "
    "sint16 sint32 sint64 sint8 size_t snprintf sprintf srand srandom sscanf staChrStrStrspn "
    "staChrStrStrspn0 stderr stdin stdout stpcpy strcat strchr strcmp strcpy strcspn strdup "
    "strerror strftime strlen strncat strncmp strncpy strndup strnlen strpbrk strrchr strspn "
    "strstr strtod strtok strtok_r strtol strtold strtoll strtoul strtoull system time tmpfile "
    "tmpnam tolower toupper uint16 uint16_t uint32 uint32_t uint64 uint64_t uint8 uint8_t "
    "ungetc unsetenv vfprintf vprintf vsnprintf vsprintf wchar_t";

constexpr std::string_view members =
    "abstractSyntax ahead allocAsn allocated altDecode altEncode any appendList arbitrary arc "
    "arcs array arraySize ask asnAsk asnDecode asnEncode asnEncodeNew asnPrint asncodg "
    "asncodgGlobal asncodg_frame asncodg_info asntstg asntstgGlobal begun below bits bmpstr "
    "bmpstr0 bmpstr16 bmpstr8 bool braces buffer charSize choice chosen chunks closure code "
    "compmask components comt context createHome dataValue dataValueDescriptor datetime day "
    "declaration decode depth differenceMinutes digits directReference dynArr0Init dynArrInit "
    "dynArrLen dynChrStrStrspn dynChrStrStrspn0 dynStrLen dyns dyns0 dyns16 dyns8 "
    "eitherthisfield elem element elements elementsLeft encode encoding end ends ext ext1990 "
    "ext1994 extended extensionmarker first firstListItem form format fraction fractionDigits "
    "frame freeAsn frm front full getHomeG growing h hasName high highKind home homes hometab "
    "hour how i1 i16 i32 i64 i64ltosint64 i64make i64max i64min i8 id identification inUse "
    "incDynArrLen incListLen incStaArrLen index indirectReference info initExtensionmarker "
    "isUtc item iter kind last lastLine lastListItem leave len length lengthSize levels limit "
    "limits line lineBegins list listLen low lowKind mainType marker maxNamed memory minute "
    "mode month n nIgnored name named names nesting next nextListItem nr nrOfEnds nrOfNamed "
    "nrOfNames null number obj obji octetAligned octets offset openType opened out owned path "
    "peekT peeked place popHomeG popPath presentationContextId prev prevListItem print "
    "property pushElem pushHomeG pushPath real real128 real32 real64 reentrant reference "
    "refused reportError reportFatalError room rows set setNamedDef singleAsn1Type size st "
    "staArr0Init staArrInit staArrLen staStrLen start stas stas0 stas16 stas8 state status "
    "string stru tag taken text transferSyntax type ui16 ui32 ui64 ui8 used util val value "
    "variables word xenum year zone";

void addWords(std::string_view text, std::vector<std::string_view> &words) {
    while (!text.empty()) {
        const std::size_t end = text.find(' ');
        words.push_back(text.substr(0, end));
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
    }
}

} // namespace

std::vector<std::string_view> reservedNames() {
    std::vector<std::string_view> words;
    addWords(capitals, words);
    addWords(functions, words);
    return words;
}

std::vector<std::string_view> reservedMembers() {
    std::vector<std::string_view> words;
    addWords(members, words);
    return words;
}

} // namespace asntree
