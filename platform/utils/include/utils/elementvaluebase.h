// Nodes of a value tree: the interface by which the application, its modules and computed nodes
// meet.
//
// A tree is the JSON data model with reference-counted nodes, 64-bit integers kept apart from real
// numbers, and pointers. Operations are called by their place in the virtual table: positions 1 to
// 50 stand behind the destructor entries in the order below, numbered in comments. Derived classes
// that were built apart add theirs behind position 50.
//
// Reference counts are safe on any thread; otherwise a tree belongs to one thread, or one holder of
// the fiber baton, at a time. Nothing here raises but for memory that runs out: what isn't there is
// null, what has another kind reads as the zero of the kind asked for.
#pragma once

#include <cstdint>
#include <ctime>

#include <drawing/runtime.h>

#include "utils/export.h"
#include "utils/vojsonptr.h"

/// What a node is: the low byte is the kind, the bits above it are flags.
enum ElementKind : int {
    kElementArray = 1,
    kElementObject = 2,
    kElementText = 4,
    kElementInteger = 5,   // 64 bits, signed
    kElementUnsigned = 6,  // 64 bits, for what doesn't fit the signed kind
    kElementReal = 7,
    kElementBoolean = 8,
    kElementPointer = 9,
    kElementTime = 10,  // seconds since the epoch
    kElementNull = 11,  // JSON's null; always flagged kElementNoValue
    kElementKindMask = 0xff,
    kElementNoValue = 0x1000,   // no usable value: readers with a default take the default
    kElementReadOnly = 0x2000,  // the setters of the node's own value refuse
};

class UTILS_EXPORT IElementValueBase {
  public:
    IElementValueBase() = default;
    IElementValueBase(const IElementValueBase&) = delete;
    IElementValueBase& operator=(const IElementValueBase&) = delete;
    virtual ~IElementValueBase() = default;

    // Const, so that a class which is also an OdRxObject keeps the two counts apart: there the same
    // names without const count the object's life.
    /* 1*/ virtual void addRef() const = 0;
    /* 2*/ virtual void release() const = 0;
    /* 3*/ virtual int valueType() const = 0;
    /// The direct child under the key, null if absent; "/" means nothing here.
    /* 4*/ virtual VoJsonPtr getProperty(const OdAnsiString& key) const = 0;
    /* 5*/ virtual VoJsonPtr getItem(int index) const = 0;
    /* 6*/ virtual int itemCount() const = 0;
    /* 7*/ virtual int propertyCount() const = 0;
    /// The child at the index in insertion order, with its key; null outside, and the key
    /// unchanged.
    /* 8*/ virtual VoJsonPtr propertyAt(int index, OdAnsiString& key) const = 0;
    /* 9*/ virtual bool hasProperty(const OdAnsiString& key) const = 0;

    // The node's own value. Numbers convert among each other, saturating at the ends of the range;
    // any other kind reads as the empty text, 0, false or null. The bodies here do just that.
    /*10*/ virtual OdAnsiString strValue() const;
    /*11*/ virtual std::int64_t longlongValue() const;
    /*12*/ virtual std::uint64_t ulonglongValue() const;
    /*13*/ virtual bool boolValue() const;
    /*14*/ virtual double floatValue() const;
    /*15*/ virtual void* ptrValue() const;
    /*16*/ virtual std::time_t timeValue() const;
    /*17*/ virtual std::time_t timeValueOr(std::time_t defaultValue) const = 0;
    /*18*/ virtual std::time_t timePropertyOr(const OdAnsiString& key,
                                              std::time_t defaultValue) const = 0;

    // Setters by key store a child, replacing what is there and keeping its place in the order, and
    // return it; null when this node is no object. `flag` is false in this system and has no
    // effect.
    /*19*/ virtual VoJsonPtr set_propertys(const OdAnsiString& key, const OdAnsiString& text,
                                           bool flag) = 0;
    /// Converts to UTF-8 and calls position 19.
    /*20*/ virtual VoJsonPtr set_propertysW(const OdAnsiString& key, const OdString& text,
                                            bool flag);
    /// Stores the node itself, not a copy. A null node stores nothing and gives null.
    /*21*/ virtual VoJsonPtr set_propertyJ(const OdAnsiString& key, const VoJsonPtr& node) = 0;
    /*22*/ virtual VoJsonPtr set_propertyI(const OdAnsiString& key, int value, bool flag) = 0;
    /*23*/ virtual VoJsonPtr set_propertyL(const OdAnsiString& key, std::int64_t value,
                                           bool flag) = 0;
    /*24*/ virtual VoJsonPtr set_propertyUL(const OdAnsiString& key, std::uint64_t value,
                                            bool flag) = 0;
    /*25*/ virtual VoJsonPtr set_propertyF(const OdAnsiString& key, double value, bool flag) = 0;
    /*26*/ virtual VoJsonPtr set_propertyT(const OdAnsiString& key, std::time_t value,
                                           bool flag) = 0;
    /*27*/ virtual VoJsonPtr set_propertyB(const OdAnsiString& key, bool value, bool flag) = 0;
    /// A pointer-valued child. The tree takes no reference; set_value_rxobject_ptr on it does.
    /*28*/ virtual VoJsonPtr set_propertyP(const OdAnsiString& key, void* value, bool flag) = 0;

    // Setters of the node's own value turn a node into one of that kind and return it; null, and no
    // change, on an array or object and on a node flagged kElementReadOnly.
    /*29*/ virtual VoJsonPtr set_valueL(std::int64_t value) = 0;
    /*30*/ virtual VoJsonPtr set_valueUL(std::uint64_t value) = 0;
    /*31*/ virtual VoJsonPtr set_valueF(double value) = 0;
    /*32*/ virtual VoJsonPtr set_valueB(bool value) = 0;
    /*33*/ virtual VoJsonPtr set_values(const OdAnsiString& text) = 0;
    /// Converts to UTF-8 and calls position 33.
    /*34*/ virtual VoJsonPtr set_valuesW(const OdString& text);
    /// Takes over kind and value of another node that is no array or object.
    /*35*/ virtual VoJsonPtr set_valueJ(const VoJsonPtr& node) = 0;
    /*36*/ virtual VoJsonPtr set_valueI(int value) = 0;
    /*37*/ virtual VoJsonPtr set_valueT(std::time_t value) = 0;
    /*38*/ virtual VoJsonPtr set_valueP(void* value) = 0;

    /// Creates the objects that are missing along the "/"-separated path and returns the last; null
    /// when something that is no object stands in the way. A trailing "/" is ignored.
    /*39*/ virtual VoJsonPtr makePath(const OdAnsiString& path) = 0;
    /// Removes the key and drops its subtree; returns this node. An absent key is no error.
    /*40*/ virtual IElementValueBase* removeProperty(const OdAnsiString& key) = 0;
    /// Appends to an array: the new number of elements, 0 when nothing was appended.
    /*41*/ virtual int append(const VoJsonPtr& node) = 0;
    /// Inserts before the index (0 to the count): the new number of elements, 0 when nothing was.
    /*42*/ virtual int insertItem(int index, const VoJsonPtr& node) = 0;
    /// Removes an element, the later ones move down: the index, -1 outside the array.
    /*43*/ virtual int removeItem(int index) = 0;
    /// Replaces an element: the index, -1 outside the array or for a null node.
    /*44*/ virtual int setItem(int index, const VoJsonPtr& node) = 0;
    /// Writes the tree to the stream as writeJson gives it; false when there is no stream or the
    /// tree is too deep.
    /*45*/ virtual bool writeBinary(OdSmartPtr<OdStreamBuf> stream) const;
    /// Merges the subtree into the child under the key, level by level: objects merge, a key that
    /// isn't there is added as a copy, and any other value that is there already stays. Number of
    /// values added.
    /*46*/ virtual int mergeProperty(const OdAnsiString& key, const VoJsonPtr& subtree) = 0;
    /// Index of the key in the object's order plus 1, 0 when it is absent.
    /*47*/ virtual int propertyIndex(const OdAnsiString& key) const = 0;
    /// Copies the children of another object into this one, each as a deep copy; those that are
    /// there already are replaced only when `replace` is true.
    /*48*/ virtual void copySubProperty(const VoJsonPtr& source, bool replace);
    /// Deep copy of the tree from this node, computed nodes as the values that they have now; null
    /// when the tree is deeper than kMaxDepth. Pointer nodes that hold a reference take another.
    /*49*/ virtual VoJsonPtr clone() const;
    /// Drops all children, or the node's own value.
    /*50*/ virtual void clear() = 0;

    /// The deepest tree that is read, written, copied or merged. Deeper ones are refused as a
    /// whole.
    static constexpr int kMaxDepth = 1000;

    /// The node at the "/"-separated path from this one, null if any part is absent. Each step goes
    /// through getProperty, so a path can pass through a computed node; in an array a decimal
    /// number names an element. A trailing "/" is ignored; the empty path asks for the key "".
    VoJsonPtr quickGetProperty(const OdAnsiString& path) const;

    /// Stores a text under the key; a null text stores a text node that has no usable value.
    VoJsonPtr set_propertys(const OdAnsiString& key, const char* text, bool flag);

    /// Leaves `value` unchanged when the key is absent or holds no number that fits.
    void GetDataI(const char* key, int& value) const;
    void GetDataJ(const char* key, VoJsonPtr& value) const;
    void SetDataI(const char* key, int value);
    void SetDataJ(const char* key, const VoJsonPtr& value);

    /// Makes this node hold a pointer with a reference to the object and returns the node; null on
    /// what refuses a value.
    VoJsonPtr set_value_rxobject_ptr(OdRxObject* object);

    /// The tree from this node as compact JSON text in UTF-8; empty when it is too deep. Pointers
    /// and reals that JSON has no form for become null, times their seconds.
    OdAnsiString writeJson() const;
};

inline VoJsonPtr::VoJsonPtr(IElementValueBase* node) : held(node) {
    if (held) {
        held->addRef();
    }
}

inline VoJsonPtr::~VoJsonPtr() {
    if (held) {
        held->release();
    }
}

inline VoJsonPtr VoJsonPtr::attach(IElementValueBase* node) {
    VoJsonPtr pointer;
    pointer.held = node;
    return pointer;
}
