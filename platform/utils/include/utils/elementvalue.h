// The node for all data that trees hold.
#pragma once

#include <atomic>
#include <memory>

#include "utils/elementvaluebase.h"

class UTILS_EXPORT ElementValue : public IElementValueBase {
  public:
    ODRX_HEAP_OPERATORS()

    /// A node without a value; the creator holds its one reference.
    ElementValue();
    ~ElementValue() override;

    /// A new empty node of the kind: array, object, text or any other of ElementKind; null for a
    /// number that is none of them.
    static VoJsonPtr createObject(int kind);

    /// Makes the node a text with a copy of the text. `flag` has no effect.
    void initWithUtf8String(const OdAnsiString& text, bool flag);

    /// Releases what the node holds; destructors of derived classes call it.
    void freePointerValue();
};
