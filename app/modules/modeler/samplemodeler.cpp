#include "samplemodeler.h"

namespace vemoapp {

namespace {

OdRxObjectPtr makeModeler() {
    return OdRxObjectImpl<SampleModeler>::createObject();
}

}  // namespace

ODRX_DEFINE_MEMBERS(SampleModeler, OdModelerGeometryBuilder, makeModeler, L"VemoSampleModeler")

OdResult SampleModeler::initializeBuilder(OdRxObject* builder, std::uint32_t entityType) {
    if (!builder) {
        return eInvalidInput;
    }
    return entityType >= kRegion && entityType <= kSurface ? eOk : eNotApplicable;
}

}  // namespace vemoapp
