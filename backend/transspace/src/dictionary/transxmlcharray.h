// TransXMLChArray: the exported vocabulary of the dictionary document (a class of constants, not an
// array: the name is fixed by the library's binary contract). Every element
// name, attribute name and fixed attribute value that the dictionary builder writes comes from this
// table, so no other literal text enters the document. Each constant is a zero-terminated UTF-16
// (Xerces XMLCh) string named after its text with the suffix _s.
//
// The dictionary namespace URI (schemaDefaultNSValue_s) is
//   http://transspace.example.org/zorb/data
// The path "/zorb/data" is fixed; the host is ours to choose. The project owns no
// domain, so the host is a subdomain of example.org (reserved by RFC 2606 for exactly this use):
// it can never clash with somebody else's real vocabulary, and nobody resolves it by accident.
#pragma once

#include <transspace/transexport.h>

#include <xercesc/util/XercesDefs.hpp>

class TRANS_EXPORT TransXMLChArray {
public:
  // Element names
  static XMLCh const dictionary_s[];
  static XMLCh const variable_s[];
  static XMLCh const variableFormat_s[];
  static XMLCh const variableWriteFormat_s[];
  static XMLCh const weightVariable_s[];
  static XMLCh const missingValue_s[];
  static XMLCh const valueLabelSet_s[];
  static XMLCh const valueLabel_s[];
  static XMLCh const valueLabelVariable_s[];
  static XMLCh const variableSet_s[];
  static XMLCh const variableSetVariable_s[];
  static XMLCh const multipleResponseSet_s[];
  static XMLCh const multipleResponseSetVariable_s[];
  static XMLCh const multipleResponseSetLabel_s[];
  static XMLCh const multipleResponseSetLabelSource_s[];
  static XMLCh const multipleResponseSetDichotomy_s[];
  static XMLCh const multipleResponseSetCategoryLabels_s[];
  static XMLCh const attributeSet_s[];
  static XMLCh const attribute_s[];
  static XMLCh const attributeValue_s[];
  static XMLCh const extension_s[];

  // Attribute names
  static XMLCh const name_s[];
  static XMLCh const label_s[];
  static XMLCh const type_s[];
  static XMLCh const alignment_s[];
  static XMLCh const measurementLevel_s[];
  static XMLCh const displayWidth_s[];
  static XMLCh const width_s[];
  static XMLCh const decimals_s[];
  static XMLCh const value_s[];
  static XMLCh const version_s[];
  static XMLCh const elementSize_s[];
  static XMLCh const length_s[];
  static XMLCh const data_s[];
  static XMLCh const locale_s[];
  static XMLCh const creationDateTime_s[];
  static XMLCh const rowCount_s[];

  // Alignment
  static XMLCh const left_s[];
  static XMLCh const right_s[];
  static XMLCh const center_s[];

  // Measurement level
  static XMLCh const unknown_s[];
  static XMLCh const nominal_s[];
  static XMLCh const ordinal_s[];
  static XMLCh const scale_s[];

  // Missing-value kinds and range ends
  static XMLCh const lowerBound_s[];
  static XMLCh const upperBound_s[];
  static XMLCh const lowest_s[];
  static XMLCh const highest_s[];

  // Multiple response set labelling
  static XMLCh const countedValues_s[];
  static XMLCh const variableLabels_s[];
  static XMLCh const variableLabel_s[];

  // Attribute kind
  static XMLCh const user_s[];
  static XMLCh const system_s[];

  // Format type names
  static XMLCh const A_s[];
  static XMLCh const AHEX_s[];
  static XMLCh const COMMA_s[];
  static XMLCh const DOLLAR_s[];
  static XMLCh const F_s[];
  static XMLCh const IB_s[];
  static XMLCh const IBHEX_s[];
  static XMLCh const P_s[];
  static XMLCh const PIB_s[];
  static XMLCh const PK_s[];
  static XMLCh const RB_s[];
  static XMLCh const RBHEX_s[];
  static XMLCh const Z_s[];
  static XMLCh const N_s[];
  static XMLCh const E_s[];
  static XMLCh const DATE_s[];
  static XMLCh const TIME_s[];
  static XMLCh const DATETIME_s[];
  static XMLCh const ADATE_s[];
  static XMLCh const JDATE_s[];
  static XMLCh const DTIME_s[];
  static XMLCh const WKDAY_s[];
  static XMLCh const MONTH_s[];
  static XMLCh const MOYR_s[];
  static XMLCh const QYR_s[];
  static XMLCh const WKYR_s[];
  static XMLCh const PERCENT_s[];
  static XMLCh const DOT_s[];
  static XMLCh const CCA_s[];
  static XMLCh const CCB_s[];
  static XMLCh const CCC_s[];
  static XMLCh const CCD_s[];
  static XMLCh const CCE_s[];
  static XMLCh const EDATE_s[];
  static XMLCh const SDATE_s[];
  static XMLCh const G_s[];
  static XMLCh const LNUMBER_s[];
  static XMLCh const LDATE_s[];
  static XMLCh const LTIME_s[];
  static XMLCh const LCA_s[];
  static XMLCh const LCB_s[];
  static XMLCh const LCC_s[];
  static XMLCh const LCD_s[];
  static XMLCh const LCE_s[];
  static XMLCh const LCF_s[];
  static XMLCh const LCG_s[];
  static XMLCh const LCH_s[];
  static XMLCh const LCI_s[];
  static XMLCh const LCJ_s[];
  static XMLCh const MTIME_s[];
  static XMLCh const YMDHMS_s[];

  // Exported with the vocabulary but written by no builder operation
  static XMLCh const dataType_s[];
  static XMLCh const stringDataType_s[];
  static XMLCh const dichotomy_s[];
  static XMLCh const named_s[];
  static XMLCh const procedure_s[];
  static XMLCh const size_s[];
  static XMLCh const source_s[];
  static XMLCh const transform_s[];
  static XMLCh const variableFormatGroup_s[];
  static XMLCh const variableKey_s[];
  static XMLCh const variableNameType_s[];
  static XMLCh const work_s[];
  // Namespace declarations and schema location of the root
  static XMLCh const xmlns_s[];                 // "xmlns"
  static XMLCh const xmlnsXsi_s[];              // "xmlns:xsi"
  static XMLCh const xsiSchemaLocation_s[];     // "xsi:schemaLocation"
  static XMLCh const schemaDefaultNSValue_s[];  // the dictionary namespace URI (see above)
  static XMLCh const schemaInstanceValue_s[];   // the W3C XML Schema-instance namespace URI
  static XMLCh const schemaLocationValue_s[];   // namespace URI, a space, namespace URI + "/dictionary-1.0.xsd"
  static XMLCh const schemaVersion_s[];         // "1.0"

  // Other constants
  static XMLCh const LS_s[];     // "LS": the Xerces feature of the load-and-save DOM implementation
  static XMLCh const UTF16_s[];  // "UTF-16"; written by no builder operation

  TransXMLChArray() = delete;
};
