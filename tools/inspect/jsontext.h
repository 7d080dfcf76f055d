// JSON text out of parts, each of which is JSON text already.
#pragma once

#include <string>

#include <utils/elementvalue.h>

namespace inspect {

inline std::string jsonOf(const VoJsonPtr& node) {
    return node ? node->writeJson().str() : "null";
}

inline std::string jsonText(const std::string& text) {
    auto* node = new ElementValue;
    node->initWithUtf8String(OdAnsiString(text), true);
    return jsonOf(VoJsonPtr::attach(node));
}

inline std::string jsonText(const OdString& text) {
    return jsonText(OdStringToUtf8String(text).str());
}

inline const char* jsonOf(bool value) {
    return value ? "true" : "false";
}

class JsonObject {
  public:
    JsonObject& add(const std::string& key, const std::string& json) {
        text += (text.empty() ? "" : ",") + jsonText(key) + ":" + json;
        return *this;
    }
    std::string json() const { return "{" + text + "}"; }

  private:
    std::string text;
};

class JsonArray {
  public:
    JsonArray& add(const std::string& json) {
        text += (text.empty() ? "" : ",") + json;
        return *this;
    }
    std::string json() const { return "[" + text + "]"; }

  private:
    std::string text;
};

}  // namespace inspect
