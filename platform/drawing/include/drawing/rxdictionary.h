// Dictionaries of named objects and the runtime's two own ones.
#pragma once

#include "drawing/odarray.h"
#include "drawing/rxclass.h"

/// Named objects, one reference each. Keys are compared as they stand. Made through its run-time
/// class: OdRxDictionary::desc()->create(). Belongs to one thread at a time.
class DRAWING_EXPORT OdRxDictionary : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdRxDictionary)

    /// The object under the key, null when there is none.
    virtual OdRxObjectPtr getAt(const OdString& key) const = 0;
    /// Stores the object under the key and gives back what stood there. A null object takes the
    /// entry out. Raises OdError_InvalidKey for the empty key.
    virtual OdRxObjectPtr putAt(const OdString& key, OdRxObject* object) = 0;
    /// Takes the entry out and gives it back, null when there was none.
    virtual OdRxObjectPtr remove(const OdString& key) = 0;
    virtual bool has(const OdString& key) const = 0;
    virtual unsigned int numEntries() const = 0;
    /// The keys of all entries, in the order of their code points.
    virtual OdStringArray keys() const = 0;
};

using OdRxDictionaryPtr = OdSmartPtr<OdRxDictionary>;

/// The system registry; null before odInitialize and after odUninitialize.
DRAWING_EXPORT OdRxDictionaryPtr odrxSysRegistry();

/// The runtime's dictionary of service classes; null while the runtime isn't up.
DRAWING_EXPORT OdRxDictionaryPtr odrxServiceDictionary();
