#pragma once

// Loads all dialogs and menus into wxXmlResource, whose handlers are ready by then. Controls and
// commands are named by their numbers, which are their ids.
void InitTarnResources();
