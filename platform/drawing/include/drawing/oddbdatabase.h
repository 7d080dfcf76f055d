// Databases: as far as this runtime has them, a drawing's identity and the name of its file.
#pragma once

#include <cstdint>

#include "drawing/rxclass.h"

class OdDbBaseHostAppServices;

/// Identity of an object in a database; 0 is no object.
struct OdDbObjectId {
    std::uint64_t handle = 0;
};

class DRAWING_EXPORT OdDbBaseDatabase : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdDbBaseDatabase)
};

/// A drawing's database; made by OdDbHostAppServices::createDatabase.
class DRAWING_EXPORT OdDbDatabase : public OdDbBaseDatabase {
    ODRX_DECLARE_MEMBERS(OdDbDatabase)

    /// Full path of the drawing's file; empty for a drawing that has none yet.
    const OdString& getFilename() const { return fileName; }
    void setFilename(const OdString& name) { fileName = name; }

    /// The services that it was made through; they outlive it.
    OdDbBaseHostAppServices* appServices() const { return host; }
    void setAppServices(OdDbBaseHostAppServices* services) { host = services; }

    /// 0 for imperial units, 1 for metric.
    int measurement() const { return measurementValue; }
    void setMeasurement(int value) { measurementValue = value; }

  private:
    OdString fileName;
    OdDbBaseHostAppServices* host = nullptr;
    int measurementValue = 0;
};

using OdDbDatabasePtr = OdSmartPtr<OdDbDatabase>;

/// The protocol extension through which a database of unknown class is asked. The order of the
/// operations is fixed.
class DRAWING_EXPORT OdDbBaseDatabasePE : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdDbBaseDatabasePE)

    virtual OdDbBaseHostAppServices* appServices(OdDbBaseDatabase* database) const = 0;
    virtual OdString databaseFileName(OdDbBaseDatabase* database) const = 0;
};

using OdDbBaseDatabasePEPtr = OdSmartPtr<OdDbBaseDatabasePE>;
