// What every node can do on the strength of its virtual operations.
#include "utils/elementvaluebase.h"

#include <algorithm>
#include <limits>

#include "elementaccess.h"
#include "jsonwriter.h"

OdAnsiString IElementValueBase::strValue() const {
    return OdAnsiString();
}
std::int64_t IElementValueBase::longlongValue() const {
    return 0;
}
std::uint64_t IElementValueBase::ulonglongValue() const {
    return 0;
}
bool IElementValueBase::boolValue() const {
    return false;
}
double IElementValueBase::floatValue() const {
    return 0;
}
void* IElementValueBase::ptrValue() const {
    return nullptr;
}
std::time_t IElementValueBase::timeValue() const {
    return 0;
}

VoJsonPtr IElementValueBase::set_propertysW(const OdAnsiString& key, const OdString& text,
                                            bool flag) {
    return set_propertys(key, OdStringToUtf8String(text), flag);
}

VoJsonPtr IElementValueBase::set_valuesW(const OdString& text) {
    return set_values(OdStringToUtf8String(text));
}

VoJsonPtr IElementValueBase::set_propertys(const OdAnsiString& key, const char* text, bool flag) {
    if (text) {
        return set_propertys(key, OdAnsiString(text), flag);
    }
    const VoJsonPtr node = ElementValue::createObject(kElementText);
    node->clear();
    return set_propertyJ(key, node);
}

void IElementValueBase::GetDataI(const char* key, int& value) const {
    const VoJsonPtr child = getProperty(key);
    const int flags = child ? child->valueType() : 0;
    const int kind = flags & kElementKindMask;
    const bool number = kind == kElementInteger || kind == kElementUnsigned ||
                        kind == kElementReal || kind == kElementTime;
    if (!number || (flags & kElementNoValue) != 0) {
        return;
    }
    const std::int64_t whole = child->longlongValue();
    if (std::in_range<int>(whole)) {
        value = static_cast<int>(whole);
    }
}

void IElementValueBase::GetDataJ(const char* key, VoJsonPtr& value) const {
    value = getProperty(key);
}

void IElementValueBase::SetDataI(const char* key, int value) {
    set_propertyI(key, value, false);
}

void IElementValueBase::SetDataJ(const char* key, const VoJsonPtr& value) {
    set_propertyJ(key, value);
}

bool IElementValueBase::writeBinary(OdSmartPtr<OdStreamBuf> stream) const {
    std::string text;
    if (stream.isNull() || !writeJsonText(*this, JsonForm::kCompact, text)) {
        return false;
    }
    constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
    for (std::size_t at = 0; at < text.size(); at += most) {
        const std::size_t count = std::min(most, text.size() - at);
        stream->putBytes(text.data() + at, static_cast<std::uint32_t>(count));
    }
    return true;
}

OdAnsiString IElementValueBase::writeJson() const {
    std::string text;
    return writeJsonText(*this, JsonForm::kCompact, text) ? OdAnsiString(text) : OdAnsiString();
}
