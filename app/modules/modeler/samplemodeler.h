// A modeler that knows kinds of bodies and no geometry: the least that the host can hand a builder
// to.
#pragma once

#include <drawing/runtime.h>

namespace vemoapp {

class SampleModeler : public OdModelerGeometryBuilder {
    ODRX_DECLARE_MEMBERS(SampleModeler)

    /// Kinds of entities that builders can be made fit for.
    enum EntityType : std::uint32_t { kRegion = 1, kSolid = 2, kBody = 3, kSurface = 4 };

    /// eOk for a kind that it knows, eNotApplicable for another, eInvalidInput without a builder.
    OdResult initializeBuilder(OdRxObject* builder, std::uint32_t entityType) override;
};

}  // namespace vemoapp
