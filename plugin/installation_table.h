// Installation of the plug-in's methods into the host's two classes.
#pragma once

/// Adds and replaces the methods, in the table's order. In a process without the host's classes: nothing. Runs once, at
/// load, after host::start(), on the main thread.
void installMethods();
