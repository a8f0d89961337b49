/* Variables of an application. */
enum { asn_first, asn_second_one, asn_extensionmarker, asn_empty, asn_number, asn_numbers, asn_alias,
       asn_iNTEGER, asn_x, asn_y };
