#include "editing/selection_edges.h"

#include "core/numbers.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

namespace editing {

namespace {

engine::Milliseconds timeOf(const timeline::SliderControls& slider)
{
    constexpr std::int32_t kHalfWidth = 5;
    const std::int32_t x = numbers::added(slider.handle.Left.get(), timeline::viewLeft());
    return moduleScaleRenderer::PixelsToMs(numbers::added(x, kHalfWidth));
}

} // namespace

SelectionEdges selectionEdges() { return {timeOf(timeline::startSlider()), timeOf(timeline::endSlider())}; }

} // namespace editing
