#include "core/transconfig.h"

#include "dictionary/transxmlcharray.h"

// XMLCh is char16_t (Xerces-C 3.2), so UTF-16 literals initialise the constants directly.
static_assert(sizeof(XMLCh) == sizeof(char16_t), "XMLCh must be a 16-bit code unit");

// The namespace URI is spelled once; the schema location is built from it at compile time.
#define TRANS_DICTIONARY_NS u"http://transspace.example.org/zorb/data"

// Element names
XMLCh const TransXMLChArray::dictionary_s[] = u"dictionary";
XMLCh const TransXMLChArray::variable_s[] = u"variable";
XMLCh const TransXMLChArray::variableFormat_s[] = u"variableFormat";
XMLCh const TransXMLChArray::variableWriteFormat_s[] = u"variableWriteFormat";
XMLCh const TransXMLChArray::weightVariable_s[] = u"weightVariable";
XMLCh const TransXMLChArray::missingValue_s[] = u"missingValue";
XMLCh const TransXMLChArray::valueLabelSet_s[] = u"valueLabelSet";
XMLCh const TransXMLChArray::valueLabel_s[] = u"valueLabel";
XMLCh const TransXMLChArray::valueLabelVariable_s[] = u"valueLabelVariable";
XMLCh const TransXMLChArray::variableSet_s[] = u"variableSet";
XMLCh const TransXMLChArray::variableSetVariable_s[] = u"variableSetVariable";
XMLCh const TransXMLChArray::multipleResponseSet_s[] = u"multipleResponseSet";
XMLCh const TransXMLChArray::multipleResponseSetVariable_s[] = u"multipleResponseSetVariable";
XMLCh const TransXMLChArray::multipleResponseSetLabel_s[] = u"multipleResponseSetLabel";
XMLCh const TransXMLChArray::multipleResponseSetLabelSource_s[] = u"multipleResponseSetLabelSource";
XMLCh const TransXMLChArray::multipleResponseSetDichotomy_s[] = u"multipleResponseSetDichotomy";
XMLCh const TransXMLChArray::multipleResponseSetCategoryLabels_s[] = u"multipleResponseSetCategoryLabels";
XMLCh const TransXMLChArray::attributeSet_s[] = u"attributeSet";
XMLCh const TransXMLChArray::attribute_s[] = u"attribute";
XMLCh const TransXMLChArray::attributeValue_s[] = u"attributeValue";
XMLCh const TransXMLChArray::extension_s[] = u"extension";

// Attribute names
XMLCh const TransXMLChArray::name_s[] = u"name";
XMLCh const TransXMLChArray::label_s[] = u"label";
XMLCh const TransXMLChArray::type_s[] = u"type";
XMLCh const TransXMLChArray::alignment_s[] = u"alignment";
XMLCh const TransXMLChArray::measurementLevel_s[] = u"measurementLevel";
XMLCh const TransXMLChArray::displayWidth_s[] = u"displayWidth";
XMLCh const TransXMLChArray::width_s[] = u"width";
XMLCh const TransXMLChArray::decimals_s[] = u"decimals";
XMLCh const TransXMLChArray::value_s[] = u"value";
XMLCh const TransXMLChArray::version_s[] = u"version";
XMLCh const TransXMLChArray::elementSize_s[] = u"elementSize";
XMLCh const TransXMLChArray::length_s[] = u"length";
XMLCh const TransXMLChArray::data_s[] = u"data";
XMLCh const TransXMLChArray::locale_s[] = u"locale";
XMLCh const TransXMLChArray::creationDateTime_s[] = u"creationDateTime";
XMLCh const TransXMLChArray::rowCount_s[] = u"rowCount";

// Alignment
XMLCh const TransXMLChArray::left_s[] = u"left";
XMLCh const TransXMLChArray::right_s[] = u"right";
XMLCh const TransXMLChArray::center_s[] = u"center";

// Measurement level
XMLCh const TransXMLChArray::unknown_s[] = u"unknown";
XMLCh const TransXMLChArray::nominal_s[] = u"nominal";
XMLCh const TransXMLChArray::ordinal_s[] = u"ordinal";
XMLCh const TransXMLChArray::scale_s[] = u"scale";

// Missing-value kinds and range ends
XMLCh const TransXMLChArray::lowerBound_s[] = u"lowerBound";
XMLCh const TransXMLChArray::upperBound_s[] = u"upperBound";
XMLCh const TransXMLChArray::lowest_s[] = u"lowest";
XMLCh const TransXMLChArray::highest_s[] = u"highest";

// Multiple response set labelling
XMLCh const TransXMLChArray::countedValues_s[] = u"countedValues";
XMLCh const TransXMLChArray::variableLabels_s[] = u"variableLabels";
XMLCh const TransXMLChArray::variableLabel_s[] = u"variableLabel";

// Attribute kind
XMLCh const TransXMLChArray::user_s[] = u"user";
XMLCh const TransXMLChArray::system_s[] = u"system";

// Format type names
XMLCh const TransXMLChArray::A_s[] = u"A";
XMLCh const TransXMLChArray::AHEX_s[] = u"AHEX";
XMLCh const TransXMLChArray::COMMA_s[] = u"COMMA";
XMLCh const TransXMLChArray::DOLLAR_s[] = u"DOLLAR";
XMLCh const TransXMLChArray::F_s[] = u"F";
XMLCh const TransXMLChArray::IB_s[] = u"IB";
XMLCh const TransXMLChArray::IBHEX_s[] = u"IBHEX";
XMLCh const TransXMLChArray::P_s[] = u"P";
XMLCh const TransXMLChArray::PIB_s[] = u"PIB";
XMLCh const TransXMLChArray::PK_s[] = u"PK";
XMLCh const TransXMLChArray::RB_s[] = u"RB";
XMLCh const TransXMLChArray::RBHEX_s[] = u"RBHEX";
XMLCh const TransXMLChArray::Z_s[] = u"Z";
XMLCh const TransXMLChArray::N_s[] = u"N";
XMLCh const TransXMLChArray::E_s[] = u"E";
XMLCh const TransXMLChArray::DATE_s[] = u"DATE";
XMLCh const TransXMLChArray::TIME_s[] = u"TIME";
XMLCh const TransXMLChArray::DATETIME_s[] = u"DATETIME";
XMLCh const TransXMLChArray::ADATE_s[] = u"ADATE";
XMLCh const TransXMLChArray::JDATE_s[] = u"JDATE";
XMLCh const TransXMLChArray::DTIME_s[] = u"DTIME";
XMLCh const TransXMLChArray::WKDAY_s[] = u"WKDAY";
XMLCh const TransXMLChArray::MONTH_s[] = u"MONTH";
XMLCh const TransXMLChArray::MOYR_s[] = u"MOYR";
XMLCh const TransXMLChArray::QYR_s[] = u"QYR";
XMLCh const TransXMLChArray::WKYR_s[] = u"WKYR";
XMLCh const TransXMLChArray::PERCENT_s[] = u"PERCENT";
XMLCh const TransXMLChArray::DOT_s[] = u"DOT";
XMLCh const TransXMLChArray::CCA_s[] = u"CCA";
XMLCh const TransXMLChArray::CCB_s[] = u"CCB";
XMLCh const TransXMLChArray::CCC_s[] = u"CCC";
XMLCh const TransXMLChArray::CCD_s[] = u"CCD";
XMLCh const TransXMLChArray::CCE_s[] = u"CCE";
XMLCh const TransXMLChArray::EDATE_s[] = u"EDATE";
XMLCh const TransXMLChArray::SDATE_s[] = u"SDATE";
XMLCh const TransXMLChArray::G_s[] = u"G";
XMLCh const TransXMLChArray::LNUMBER_s[] = u"LNUMBER";
XMLCh const TransXMLChArray::LDATE_s[] = u"LDATE";
XMLCh const TransXMLChArray::LTIME_s[] = u"LTIME";
XMLCh const TransXMLChArray::LCA_s[] = u"LCA";
XMLCh const TransXMLChArray::LCB_s[] = u"LCB";
XMLCh const TransXMLChArray::LCC_s[] = u"LCC";
XMLCh const TransXMLChArray::LCD_s[] = u"LCD";
XMLCh const TransXMLChArray::LCE_s[] = u"LCE";
XMLCh const TransXMLChArray::LCF_s[] = u"LCF";
XMLCh const TransXMLChArray::LCG_s[] = u"LCG";
XMLCh const TransXMLChArray::LCH_s[] = u"LCH";
XMLCh const TransXMLChArray::LCI_s[] = u"LCI";
XMLCh const TransXMLChArray::LCJ_s[] = u"LCJ";
XMLCh const TransXMLChArray::MTIME_s[] = u"MTIME";
XMLCh const TransXMLChArray::YMDHMS_s[] = u"YMDHMS";

// Exported with the vocabulary but written by no builder operation
XMLCh const TransXMLChArray::dataType_s[] = u"dataType";
XMLCh const TransXMLChArray::stringDataType_s[] = u"stringDataType";
XMLCh const TransXMLChArray::dichotomy_s[] = u"dichotomy";
XMLCh const TransXMLChArray::named_s[] = u"named";
XMLCh const TransXMLChArray::procedure_s[] = u"procedure";
XMLCh const TransXMLChArray::size_s[] = u"size";
XMLCh const TransXMLChArray::source_s[] = u"source";
XMLCh const TransXMLChArray::transform_s[] = u"transform";
XMLCh const TransXMLChArray::variableFormatGroup_s[] = u"variableFormatGroup";
XMLCh const TransXMLChArray::variableKey_s[] = u"variableKey";
XMLCh const TransXMLChArray::variableNameType_s[] = u"variableNameType";
XMLCh const TransXMLChArray::work_s[] = u"work";
// Namespace declarations and schema location of the root
XMLCh const TransXMLChArray::xmlns_s[] = u"xmlns";
XMLCh const TransXMLChArray::xmlnsXsi_s[] = u"xmlns:xsi";
XMLCh const TransXMLChArray::xsiSchemaLocation_s[] = u"xsi:schemaLocation";
XMLCh const TransXMLChArray::schemaDefaultNSValue_s[] = TRANS_DICTIONARY_NS;
XMLCh const TransXMLChArray::schemaInstanceValue_s[] = u"http://www.w3.org/2001/XMLSchema-instance";
XMLCh const TransXMLChArray::schemaLocationValue_s[] =
    TRANS_DICTIONARY_NS u" " TRANS_DICTIONARY_NS u"/dictionary-1.0.xsd";
XMLCh const TransXMLChArray::schemaVersion_s[] = u"1.0";

// Other constants
XMLCh const TransXMLChArray::LS_s[] = u"LS";
XMLCh const TransXMLChArray::UTF16_s[] = u"UTF-16";
