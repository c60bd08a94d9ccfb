#include "platform/json/nlohmann_json.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace homewarden::json {
namespace {

using Library = nlohmann::ordered_json;

// An object of the library's ordered kind is searched for each member that is added; what comes
// from outside is put together without.
class Reader : public nlohmann::json_sax<Library> {
 public:
  bool null() override { return take(Json()); }
  bool boolean(bool value) override { return take(value); }
  bool number_integer(number_integer_t value) override { return take(std::int64_t{value}); }
  bool number_unsigned(number_unsigned_t value) override {
    constexpr number_unsigned_t kLargest = INT64_MAX;
    return value > kLargest ? take(static_cast<double>(value))
                            : take(static_cast<std::int64_t>(value));
  }
  bool number_float(number_float_t value, const string_t&) override { return take(value); }
  bool string(string_t& value) override { return take(std::move(value)); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return begin(true); }
  bool start_array(std::size_t) override { return begin(false); }
  bool key(string_t& name) override {
    open_.back().name = std::move(name);
    return true;
  }
  bool end_object() override {
    Open done = end();
    return take(std::move(done.members));
  }
  bool end_array() override {
    Open done = end();
    return take(std::move(done.values));
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

  Json result;

 private:
  struct Open {
    bool is_object = false;
    std::string name;  // of the member that is being read
    Json::Object members;
    Json::Array values;
  };

  bool begin(bool is_object) {
    if (open_.size() >= static_cast<std::size_t>(JsonCodec::kDeepest)) return false;
    open_.push_back({is_object, {}, {}, {}});
    return true;
  }

  Open end() {
    Open done = std::move(open_.back());
    open_.pop_back();
    return done;
  }

  bool take(Json value) {
    if (open_.empty()) {
      result = std::move(value);
      return true;
    }
    Open& in = open_.back();
    if (!in.is_object) {
      in.values.push_back(std::move(value));
      return true;
    }
    for (auto& [name, before] : in.members)
      if (name == in.name) {
        before = std::move(value);
        return true;
      }
    in.members.emplace_back(std::move(in.name), std::move(value));
    return true;
  }

  std::vector<Open> open_;
};

Library library_value(const Json& value) {
  if (const bool* boolean = value.boolean()) return *boolean;
  if (const auto* integer = value.integer()) return *integer;
  if (const double* real = value.real()) return *real;
  if (const auto* text = value.text()) return *text;
  if (const auto* array = value.array()) {
    Library values = Library::array();
    for (const Json& one : *array) values.push_back(library_value(one));
    return values;
  }
  if (const auto* object = value.object()) {
    Library::object_t members;
    for (const auto& [name, one] : *object)
      members.std::vector<Library::object_t::value_type>::emplace_back(name, library_value(one));
    return members;
  }
  return nullptr;
}

}  // namespace

std::optional<Json> NlohmannJson::read(std::string_view text) const {
  Reader reader;
  // The library takes a zero character for the end.
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  if (!Library::sax_parse(text, &reader)) return std::nullopt;
  return std::move(reader.result);
}

std::string NlohmannJson::write(const Json& value) const {
  return library_value(value).dump(-1, ' ', false, Library::error_handler_t::replace);
}

}  // namespace homewarden::json
