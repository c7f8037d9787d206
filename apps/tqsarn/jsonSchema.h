#pragma once
// A JSON Schema checker for the keywords the session schema uses (draft 2020-12 meaning):
// type, enum, const, properties, required, additionalProperties, minProperties,
// maxProperties, items, minItems, maxItems, minimum, maximum, exclusiveMinimum,
// exclusiveMaximum, minLength, pattern, allOf, if/then/else and local $ref; annotations are
// skipped. A schema that uses any other keyword is refused when the checker is made, so the
// schema file cannot ask for a rule that this code would silently not check.

#include <nlohmann/json.hpp>

#include <string>

namespace tqsarn {

struct SchemaViolation {
    std::string pointer; // JSON pointer of the value at fault ("/steps/3/button")
    std::string message; // what is wrong with it, for a user
};

class JsonSchema {
public:
    // Fails (false, with the reason in *error) when the schema uses a keyword this checker
    // does not know or a $ref it cannot resolve.
    bool load(const nlohmann::json& schema, std::string* error);
    // The first violation in document order of the schema's rules, or an empty pointer and
    // message when the document conforms.
    bool check(const nlohmann::json& document, SchemaViolation* violation) const;

private:
    bool vet(const nlohmann::json& schema, const std::string& where, std::string* error) const;
    bool validate(const nlohmann::json& value, const nlohmann::json& schema, const std::string& pointer,
                  SchemaViolation* violation) const;
    const nlohmann::json* resolve(const std::string& ref) const;

    nlohmann::json fSchema;
};

} // namespace tqsarn
