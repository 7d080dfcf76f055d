#include "drawing/oddbdatabase.h"

#include "databaseextension.h"
#include "drawing/rxobjectimpl.h"

namespace {

OdRxObjectPtr makeDatabase() {
    return OdRxObjectImpl<OdDbDatabase>::createObject();
}

class DatabaseExtension : public OdDbBaseDatabasePE {
  public:
    OdDbBaseHostAppServices* appServices(OdDbBaseDatabase* database) const override {
        const OdDbDatabasePtr drawing = OdDbDatabase::cast(database);
        return drawing.isNull() ? nullptr : drawing->appServices();
    }
    OdString databaseFileName(OdDbBaseDatabase* database) const override {
        const OdDbDatabasePtr drawing = OdDbDatabase::cast(database);
        return drawing.isNull() ? OdString() : drawing->getFilename();
    }
};

}  // namespace

ODRX_DEFINE_MEMBERS(OdDbBaseDatabase, OdRxObject, nullptr, L"OdDbBaseDatabase")
ODRX_DEFINE_MEMBERS(OdDbDatabase, OdDbBaseDatabase, makeDatabase, L"OdDbDatabase")
ODRX_DEFINE_MEMBERS(OdDbBaseDatabasePE, OdRxObject, nullptr, L"OdDbBaseDatabasePE")

void attachDatabaseExtension() {
    const auto extension = OdRxObjectImpl<DatabaseExtension>::createObject();
    OdDbDatabase::desc()->addX(OdDbBaseDatabasePE::desc(), extension.get());
}
