#include "jsonSchema.h"

#include <regex>
#include <set>
#include <sstream>

namespace tqsarn {
namespace {

using nlohmann::json;

const std::set<std::string> kAnnotations = {"$schema", "$id", "$comment", "$defs", "title", "description",
                                            "default", "examples"};
const std::set<std::string> kKeywords = {"type", "enum", "const", "properties", "required", "additionalProperties",
                                         "minProperties", "maxProperties", "items", "minItems", "maxItems",
                                         "minimum", "maximum", "exclusiveMinimum", "exclusiveMaximum", "minLength",
                                         "pattern", "allOf", "if", "then", "else", "$ref"};

std::string escapeToken(const std::string& key)
{
    std::string out;
    for (char c : key) {
        if (c == '~')
            out += "~0";
        else if (c == '/')
            out += "~1";
        else
            out += c;
    }
    return out;
}

bool hasType(const json& value, const std::string& type)
{
    if (type == "object")
        return value.is_object();
    if (type == "array")
        return value.is_array();
    if (type == "string")
        return value.is_string();
    if (type == "boolean")
        return value.is_boolean();
    if (type == "null")
        return value.is_null();
    if (type == "number")
        return value.is_number();
    if (type == "integer")
        return value.is_number_integer() ||
               (value.is_number_float() && value.get<double>() == static_cast<double>(static_cast<long long>(value.get<double>())));
    return false;
}

std::string article(const std::string& type)
{
    return (type == "object" || type == "array" || type == "integer") ? "an " + type : "a " + type;
}

std::string plural(long long n, const std::string& word) { return std::to_string(n) + " " + word + (n == 1 ? "" : "s"); }

std::string numberText(const json& n)
{
    std::ostringstream out;
    out << n.dump();
    return out.str();
}

} // namespace

bool JsonSchema::load(const json& schema, std::string* error)
{
    fSchema = schema;
    if (!vet(fSchema, "", error)) {
        fSchema = json();
        return false;
    }
    return true;
}

const json* JsonSchema::resolve(const std::string& ref) const
{
    if (ref.rfind("#", 0) != 0)
        return nullptr;
    try {
        const json::json_pointer pointer(ref.substr(1));
        return fSchema.contains(pointer) ? &fSchema.at(pointer) : nullptr;
    } catch (const json::exception&) {
        return nullptr;
    }
}

bool JsonSchema::vet(const json& schema, const std::string& where, std::string* error) const
{
    auto fail = [&](const std::string& why) {
        if (error)
            *error = "schema" + (where.empty() ? std::string() : " at " + where) + ": " + why;
        return false;
    };
    if (schema.is_boolean())
        return true;
    if (!schema.is_object())
        return fail("a schema must be an object or a boolean");
    for (auto it = schema.begin(); it != schema.end(); ++it) {
        const std::string& key = it.key();
        const std::string at = where + "/" + escapeToken(key);
        if (key == "$defs" || key == "properties") {
            if (!it->is_object())
                return fail(key + " must be an object");
            for (auto sub = it->begin(); sub != it->end(); ++sub)
                if (!vet(*sub, at + "/" + escapeToken(sub.key()), error))
                    return false;
        } else if (key == "items" || key == "additionalProperties" || key == "if" || key == "then" || key == "else") {
            if (!vet(*it, at, error))
                return false;
        } else if (key == "allOf") {
            if (!it->is_array())
                return fail("allOf must be an array");
            for (std::size_t i = 0; i < it->size(); ++i)
                if (!vet((*it)[i], at + "/" + std::to_string(i), error))
                    return false;
        } else if (key == "$ref") {
            if (!it->is_string() || !resolve(it->get<std::string>()))
                return fail("cannot resolve $ref " + it->dump());
        } else if (key == "pattern") {
            try {
                std::regex(it->get<std::string>(), std::regex::ECMAScript);
            } catch (const std::exception&) {
                return fail("pattern " + it->dump() + " is not a regular expression");
            }
        } else if (!kKeywords.count(key) && !kAnnotations.count(key)) {
            return fail("keyword \"" + key + "\" is not one the session checker knows");
        }
    }
    return true;
}

bool JsonSchema::check(const json& document, SchemaViolation* violation) const
{
    SchemaViolation local;
    return validate(document, fSchema, "", violation ? violation : &local);
}

bool JsonSchema::validate(const json& value, const json& schema, const std::string& pointer,
                          SchemaViolation* violation) const
{
    auto fail = [&](const std::string& at, const std::string& message) {
        violation->pointer = at;
        violation->message = message;
        return false;
    };
    if (schema.is_boolean())
        return schema.get<bool>() || fail(pointer, "is not allowed here");

    if (schema.contains("$ref")) {
        const json* target = resolve(schema["$ref"].get<std::string>());
        if (!target || !validate(value, *target, pointer, violation))
            return target ? false : fail(pointer, "has a schema that cannot be resolved");
    }
    if (schema.contains("type")) {
        const json& type = schema["type"];
        std::vector<std::string> types;
        if (type.is_array())
            for (const json& t : type)
                types.push_back(t.get<std::string>());
        else
            types.push_back(type.get<std::string>());
        bool any = false;
        for (const std::string& t : types)
            any = any || hasType(value, t);
        if (!any) {
            std::string want;
            for (std::size_t i = 0; i < types.size(); ++i)
                want += (i == 0 ? "" : (i + 1 == types.size() ? " or " : ", ")) + article(types[i]);
            return fail(pointer, "must be " + want + ", not " + value.dump());
        }
    }
    if (schema.contains("const") && value != schema["const"])
        return fail(pointer, "must be " + schema["const"].dump() + ", not " + value.dump());
    if (schema.contains("enum")) {
        bool found = false;
        std::string choices;
        for (const json& choice : schema["enum"]) {
            found = found || value == choice;
            choices += (choices.empty() ? "" : ", ") + choice.dump();
        }
        if (!found)
            return fail(pointer, "is " + value.dump() + "; it must be one of " + choices);
    }
    if (value.is_object()) {
        if (schema.contains("required"))
            for (const json& name : schema["required"])
                if (!value.contains(name.get<std::string>()))
                    return fail(pointer + "/" + escapeToken(name.get<std::string>()), "is missing");
        if (schema.contains("minProperties") && value.size() < schema["minProperties"].get<std::size_t>())
            return fail(pointer, "needs at least " + plural(schema["minProperties"].get<long long>(), "field"));
        if (schema.contains("maxProperties") && value.size() > schema["maxProperties"].get<std::size_t>())
            return fail(pointer, "takes at most " + plural(schema["maxProperties"].get<long long>(), "field") +
                                     ", not " + std::to_string(value.size()));
        const json* properties = schema.contains("properties") ? &schema["properties"] : nullptr;
        for (auto it = value.begin(); it != value.end(); ++it) {
            const std::string at = pointer + "/" + escapeToken(it.key());
            if (properties && properties->contains(it.key())) {
                if (!validate(*it, (*properties)[it.key()], at, violation))
                    return false;
            } else if (schema.contains("additionalProperties")) {
                const json& extra = schema["additionalProperties"];
                if (extra.is_boolean() && !extra.get<bool>()) {
                    std::string known;
                    if (properties)
                        for (auto p = properties->begin(); p != properties->end(); ++p)
                            if (p.key() != "kind")
                                known += (known.empty() ? "" : ", ") + p.key();
                    return fail(at, "is not a field here" + (known.empty() ? std::string() : " (fields: " + known + ")"));
                }
                if (!validate(*it, extra, at, violation))
                    return false;
            }
        }
    }
    if (value.is_array()) {
        if (schema.contains("minItems") && value.size() < schema["minItems"].get<std::size_t>())
            return fail(pointer, "needs at least " + plural(schema["minItems"].get<long long>(), "item") + ", not " +
                                     std::to_string(value.size()));
        if (schema.contains("maxItems") && value.size() > schema["maxItems"].get<std::size_t>())
            return fail(pointer, "takes at most " + plural(schema["maxItems"].get<long long>(), "item") + ", not " +
                                     std::to_string(value.size()));
        if (schema.contains("items"))
            for (std::size_t i = 0; i < value.size(); ++i)
                if (!validate(value[i], schema["items"], pointer + "/" + std::to_string(i), violation))
                    return false;
    }
    if (value.is_number()) {
        const double v = value.get<double>();
        if (schema.contains("minimum") && v < schema["minimum"].get<double>())
            return fail(pointer, "must be at least " + numberText(schema["minimum"]) + ", not " + value.dump());
        if (schema.contains("maximum") && v > schema["maximum"].get<double>())
            return fail(pointer, "must be at most " + numberText(schema["maximum"]) + ", not " + value.dump());
        if (schema.contains("exclusiveMinimum") && v <= schema["exclusiveMinimum"].get<double>())
            return fail(pointer, "must be above " + numberText(schema["exclusiveMinimum"]) + ", not " + value.dump());
        if (schema.contains("exclusiveMaximum") && v >= schema["exclusiveMaximum"].get<double>())
            return fail(pointer, "must be below " + numberText(schema["exclusiveMaximum"]) + ", not " + value.dump());
    }
    if (value.is_string()) {
        const std::string& s = value.get_ref<const std::string&>();
        if (schema.contains("minLength") && s.size() < schema["minLength"].get<std::size_t>())
            return fail(pointer, schema["minLength"].get<std::size_t>() == 1
                                     ? std::string("must not be empty")
                                     : "needs at least " + plural(schema["minLength"].get<long long>(), "character"));
        if (schema.contains("pattern") &&
            !std::regex_search(s, std::regex(schema["pattern"].get<std::string>(), std::regex::ECMAScript)))
            return fail(pointer, "is " + value.dump() + "; it must match " + schema["pattern"].get<std::string>());
    }
    if (schema.contains("allOf"))
        for (const json& part : schema["allOf"])
            if (!validate(value, part, pointer, violation))
                return false;
    if (schema.contains("if")) {
        SchemaViolation ignored;
        if (validate(value, schema["if"], pointer, &ignored)) {
            if (schema.contains("then") && !validate(value, schema["then"], pointer, violation))
                return false;
        } else if (schema.contains("else") && !validate(value, schema["else"], pointer, violation)) {
            return false;
        }
    }
    return true;
}

} // namespace tqsarn
