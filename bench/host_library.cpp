// The embedded host as a shared library has nothing of its own: all of it comes from the static one.
