#pragma once

// The timeline engine: one object that holds all interfaces.

namespace twcore {

/// Makes the engine's class known to the factory under its name. Call once, before the first engine is created.
void registerTarnwickTimeline();

} // namespace twcore
