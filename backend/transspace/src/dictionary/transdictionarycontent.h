// TransDictionaryContent: what the dictionary document of a host data source holds, written once
// for both roads of the export. Each operation sends one part of the dictionary to a sink, element
// by element in document order, with every attribute already converted to its text (host texts
// from the host's code page, integers in the numeric locale, numbers of values in English
// notation). Where an element goes among elements that already exist is not its business: the
// document builder (TransDictionaryImpl) places what the sink made, the text road writes the parts
// in the document's order (document()).
#pragma once

#include <string>
#include <vector>

#include <unicode/umachine.h>
#include <xercesc/util/XercesDefs.hpp>

#include <transspace/zorb/datasource.h>

#include "core/transhosttext.h"
#include "values/transnumbertext.h"

class TransDictionarySink;

class TransDictionaryContent {
public:
  // The extension record types that are written, in this order; no other type ever is.
  static int const extensionTypes[10];

  explicit TransDictionaryContent(TransDictionarySink& sink);
  TransDictionaryContent(TransDictionaryContent const&) = delete;
  TransDictionaryContent& operator=(TransDictionaryContent const&) = delete;

  // The whole dictionary: the root with all its attributes, then every section in order.
  void document(ZORB_DataSource const& ds);

  // Attributes of the element the sink has open: the root's namespace declarations; the root's
  // locale, creation time and row count; a format's three attributes.
  void namespaceAttributes();
  void rootAttributes(ZORB_DataSource const& ds);
  void formatAttributes(int type, int width, int decimals);

  // Elements. Each returns what the document builder reports about it.
  void variable(ZORB_Variable const& var);
  void variableFormat(ZORB_Variable const& var);
  void variableWriteFormat(ZORB_Variable const& var);
  int missingValues(ZORB_Variable const& var);     // the host's signed count; one element per value
  bool valueLabelSet(ZORB_Variable const& var);    // false (and nothing sent) without labels
  bool weightVariable(ZORB_DataSource const& ds);  // false (and nothing sent) when unweighted
  unsigned int variableSet(VariableSet const& set, ZORB_DataSource const& ds);  // members written
  unsigned int multipleResponseSet(VariableSet const& set, ZORB_DataSource const& ds);
  bool attributeSet(DatasourceAttributes const& attributes);  // false (nothing sent) when empty
  void attribute(std::string const& name, std::vector<std::string> const& values);
  bool extension(ZORB_DataSource const& ds, int type);  // false (nothing sent) when absent

private:
  void fixed(XMLCh const* name, XMLCh const* value);
  void text(XMLCh const* name, char const* mbcs);
  void integer(XMLCh const* name, long value);
  void number(XMLCh const* name, double value);
  void element(XMLCh const* tag, XMLCh const* name, char const* mbcs);
  void format(XMLCh const* tag, int type, int width, int decimals);
  unsigned int members(VariableSet const& set, ZORB_DataSource const& ds, XMLCh const* memberTag);

  TransDictionarySink& sink_;
  TransNumberText numbers_;
  TransHostText hostText_;
};
