// What the layer plays, from environment variables that are read once. Without them it is macOS 10.10 with an
// application built before 10.9, in which plain objects do not answer _cfTypeID.
#pragma once

namespace platform {

// PLATFORM_SYSTEM=10.4: the oldest systems, 10.4 to 10.6.
bool playsOldestSystem();

// PLATFORM_TYPED_OBJECTS=1: every object answers _cfTypeID.
bool typesAllObjects();

} // namespace platform
