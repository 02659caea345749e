// Validates XML texts against the dictionary's XML Schema with Xerces-C (schema validation with
// full checking, namespaces on, nothing fetched from outside), and turns the rich and the file-made
// data sources of the tests into dictionary texts to validate.
#pragma once

#include <memory>
#include <string>
#include <vector>

class ZORB_DataSource;

namespace schematest {

// The schema in the source tree: the file that `transspace schema` prints and that is installed.
std::string schemaPath();

class SchemaValidator {
public:
  // Loads the schema once; the problems of the schema itself are then in `schemaErrors()`.
  explicit SchemaValidator(std::string const& schemaPath = schematest::schemaPath());
  ~SchemaValidator();
  SchemaValidator(SchemaValidator const&) = delete;
  SchemaValidator& operator=(SchemaValidator const&) = delete;

  std::vector<std::string> const& schemaErrors() const;
  // The problems of `xml` as "line:column: message", in the order found; empty when it is valid.
  std::vector<std::string> errors(std::string const& xml);

private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

// The dictionary document of `ds` as the library builds and serialises it (UTF-8, compact).
std::string dictionaryText(ZORB_DataSource const& ds);

// All problems in one text, for failure messages.
std::string joined(std::vector<std::string> const& errors);

}  // namespace schematest
