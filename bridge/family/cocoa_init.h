// The start-up of Cocoa inside a host process.
#pragma once

// Run first by the constructors, the initialiser, the finaliser and the shared methods of the class. It
// fetches the family's registry and starts AppKit once; what the family's libraries bring is asked for
// again until it is there.
void CocoaInit();
