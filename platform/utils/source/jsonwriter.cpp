#include "jsonwriter.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>

#include "elementaccess.h"
#include "utf8check.h"

namespace {

template <class Writer>
class TreeWriter {
  public:
    explicit TreeWriter(rapidjson::StringBuffer& buffer) : writer(buffer) {}

    // False when the tree has more than so many levels.
    bool write(const IElementValueBase& node, int levels) {
        const bool array = hasKind(node, kElementArray);
        if (!array && !hasKind(node, kElementObject)) {
            writeValue(node);
            return true;
        }
        if (levels == 0) {
            return false;
        }
        return array ? writeArray(node, levels) : writeObject(node, levels);
    }

  private:
    bool writeArray(const IElementValueBase& array, int levels) {
        writer.StartArray();
        for (int index = 0; index < array.itemCount(); ++index) {
            const VoJsonPtr item = array.getItem(index);
            if (item && !write(*item.get(), levels - 1)) {
                return false;
            }
        }
        writer.EndArray();
        return true;
    }

    bool writeObject(const IElementValueBase& object, int levels) {
        writer.StartObject();
        for (int index = 0; index < object.propertyCount(); ++index) {
            OdAnsiString key;
            const VoJsonPtr value = object.propertyAt(index, key);
            if (value) {
                writeText(key);
                if (!write(*value.get(), levels - 1)) {
                    return false;
                }
            }
        }
        writer.EndObject();
        return true;
    }

    void writeValue(const IElementValueBase& node) {
        const int flags = node.valueType();
        switch ((flags & kElementNoValue) != 0 ? kElementNull : flags & kElementKindMask) {
            case kElementText:
                writeText(node.strValue());
                break;
            case kElementInteger:
                writer.Int64(node.longlongValue());
                break;
            case kElementUnsigned:
                writer.Uint64(node.ulonglongValue());
                break;
            case kElementReal:
                writeReal(node.floatValue());
                break;
            case kElementBoolean:
                writer.Bool(node.boolValue());
                break;
            case kElementTime:
                writer.Int64(node.timeValue());
                break;
            default:
                writer.Null();
        }
    }

    void writeText(const OdAnsiString& text) {
        if (isUtf8(text.view())) {
            writer.String(text.c_str(), static_cast<rapidjson::SizeType>(text.getLength()));
        } else {
            writeText(OdStringToUtf8String(OdUtf8StringToOdString(text)));
        }
    }

    void writeReal(double number) {
        if (std::isfinite(number)) {
            writer.Double(number);
        } else {
            writer.Null();
        }
    }

    Writer writer;
};

template <class Writer>
bool writeWith(const IElementValueBase& node, rapidjson::StringBuffer& buffer) {
    return TreeWriter<Writer>(buffer).write(node, IElementValueBase::kMaxDepth);
}

}  // namespace

bool writeJsonText(const IElementValueBase& node, JsonForm form, std::string& text) {
    rapidjson::StringBuffer buffer;
    const bool indented = form == JsonForm::kIndented;
    const bool whole =
        indented ? writeWith<rapidjson::PrettyWriter<rapidjson::StringBuffer>>(node, buffer)
                 : writeWith<rapidjson::Writer<rapidjson::StringBuffer>>(node, buffer);
    if (whole) {
        text.assign(buffer.GetString(), buffer.GetSize());
        text.append(indented ? "\n" : "");
    }
    return whole;
}
