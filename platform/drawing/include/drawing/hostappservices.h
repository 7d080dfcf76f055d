// What the runtime asks of the application that hosts it.
//
// Each class stands for one layer of the chain OdDbBaseHostAppServices, OdDbHostAppServices,
// OdDbHostAppServices2, ExHostAppServices. Operations are called by their place in the virtual
// table: collectFilePathsInDirectory stands between getSystemFontFolders and fileDialog, and
// initializeModelerBuilder between numThreads and getEnv.
//
// Called on the thread that the runtime runs on. Objects are not copied and not counted here.
#pragma once

#include "drawing/odarray.h"
#include "drawing/oddbdatabase.h"
#include "drawing/odstreambuf.h"
#include "drawing/odttfdescriptor.h"

using OdPassword = OdString;

/// How the host shows the progress of a long operation.
class DRAWING_EXPORT OdDbHostAppProgressMeter : public OdRxObject {
  public:
    virtual void start(const OdString& title = OdString()) = 0;
    virtual void stop() = 0;
    virtual void meterProgress() = 0;
    virtual void setLimit(int steps) = 0;
};

/// Undo of a database: made anew for each request.
class DRAWING_EXPORT OdDbUndoController : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdDbUndoController)
};
using OdDbUndoControllerPtr = OdSmartPtr<OdDbUndoController>;

/// The undo controller that applications use as it is.
class DRAWING_EXPORT ExUndoController : public OdDbUndoController {};

/// What a modeler registers in the service dictionary: its run-time class, under
/// "OdModelerGeometryCreator".
class DRAWING_EXPORT OdModelerGeometryBuilder : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdModelerGeometryBuilder)

    /// Makes the builder fit for entities of the type.
    virtual OdResult initializeBuilder(OdRxObject* builder, std::uint32_t entityType) = 0;
};

/// One layer of host services; the file's head gives the chain.
class DRAWING_EXPORT OdDbBaseHostAppServices : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdDbBaseHostAppServices)

    /// What a file is looked for as.
    enum FindFileHint {
        kDefault = 0,
        kFontFile = 1,
        kCompiledShapeFile = 2,
        kTrueTypeFontFile = 3,
        kEmbeddedImageFile = 4,
        kXRefDrawing = 5,
        kPatternFile = 6,
        kFontMapFile = 8,
        kTextureMapFile = 10
    };

    /// Full path of a support file, empty when it isn't found. The database may be null.
    virtual OdString findFile(const OdString& fileName, OdDbBaseDatabase* database = nullptr,
                              FindFileHint hint = kDefault) = 0;
    /// The meter stays the host's; pair it with releaseProgressMeter.
    virtual OdDbHostAppProgressMeter* newProgressMeter() = 0;
    virtual void releaseProgressMeter(OdDbHostAppProgressMeter* meter) = 0;
    /// The name of the run-time class that databases have.
    virtual OdRxClass* databaseClass() const = 0;

    virtual void warning(const char* /*group*/, const OdString& /*message*/) {}
    void warning(const OdString& message) { warning(nullptr, message); }

    virtual OdDbUndoControllerPtr newUndoController() = 0;
    virtual OdStreamBufPtr newUndoStream();

    /// The file of the face that fits the description. False, with `fileName` unchanged, when there
    /// is none; this layer knows no faces.
    virtual bool ttfFileNameByDescriptor(const OdTtfDescriptor& description, OdString& fileName);
    virtual OdString getAlternateFontName() const;
    virtual OdString getFontMapFileName() const;
    /// The font to use in place of a missing one; this layer answers with the alternate font.
    virtual OdString getSubstituteFont(const OdString& fontName, OdFontType fontType);
    /// Appends the system's font folders, none of which lies inside another; true when there are
    /// any.
    virtual bool getSystemFontFolders(OdStringArray& folders) const;
    /// Appends the full paths of the folder's files that fit the wildcard mask; the whole name's
    /// case counts in this layer.
    virtual void collectFilePathsInDirectory(OdStringArray& result, const OdString& directory,
                                             const OdString& mask);
    /// Asks the user for a file; this layer has no user and answers with the empty text.
    virtual OdString fileDialog(int flags, const OdString& caption, const OdString& extension,
                                const OdString& filter);
    virtual OdString getTempPath() const;
    virtual int numThreads() const { return 1; }
    /// Hands a geometry builder to the modeler's OdModelerGeometryBuilder and gives its answer;
    /// eNoInterface when no modeler is registered or its class makes no object. Raises
    /// OdError_NotThatKindOfClass when something else is registered in its place.
    virtual OdResult initializeModelerBuilder(OdRxObject* builder, std::uint32_t entityType);
    /// An environment variable into `value`; false when it isn't set.
    virtual bool getEnv(const OdString& name, OdString& value);
    virtual bool setEnv(const OdString& name, const OdString& value);
};

class DRAWING_EXPORT OdDbHostAppServices : public OdDbBaseHostAppServices {
    ODRX_DECLARE_MEMBERS(OdDbHostAppServices)

    using OdDbBaseHostAppServices::warning;
    virtual void warning(OdResult code, OdDbObjectId object) { warning(nullptr, code, object); }
    virtual void warning(const OdError& error) { warning(nullptr, error.description()); }
    virtual void warning(const char* group, const OdError& error) {
        warning(group, error.description());
    }
    /// Warns with the code's text.
    virtual void warning(const char* group, OdResult code, OdDbObjectId object);

    /// Asks for the password of a protected drawing; false when none was supplied.
    virtual bool getPassword(const OdString& drawingName, bool isXref, OdPassword& password);
    virtual OdString getSubstituteFontByChar(const OdString& fontName, OdChar character,
                                             OdDbBaseDatabase* database);
    /// A new database. `createDefault` fills it as a new drawing is filled; `measurement` is 0 for
    /// imperial units, 1 for metric.
    virtual OdDbDatabasePtr createDatabase(bool createDefault = true, int measurement = 0);
    OdRxClass* databaseClass() const override;
};

class DRAWING_EXPORT OdDbHostAppServices2 : public OdDbHostAppServices {};

/// Folders that getSystemFontFolders gives instead of the system's own, as they are; an empty list
/// gives the system's again. Process-wide; for tools that look at another machine's fonts.
DRAWING_EXPORT void odSetSystemFontFolders(const OdStringArray& folders);

/// The host services that applications derive theirs from; they are their own progress meter, which
/// shows nothing.
class DRAWING_EXPORT ExHostAppServices : public OdDbHostAppServices2,
                                         public OdDbHostAppProgressMeter {
  public:
    OdDbHostAppProgressMeter* newProgressMeter() override { return this; }
    void releaseProgressMeter(OdDbHostAppProgressMeter* /*meter*/) override {}
    void start(const OdString& /*title*/) override {}
    void stop() override {}
    void meterProgress() override {}
    void setLimit(int /*steps*/) override {}

    OdString findFile(const OdString& fileName, OdDbBaseDatabase* database,
                      FindFileHint hint) override;
    OdDbUndoControllerPtr newUndoController() override;
    /// Opens a file for reading; raises as OdRxSystemServices::createFile does.
    virtual OdStreamBufPtr readFile(const OdString& fileName);
};
