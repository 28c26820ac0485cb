// The program's icon in the notification area: adding it, keeping it in line with the
// monitor form's icon, removing it, and the mouse messages and popup menu behind it.
#pragma once

// Adds the icon (operation 0) with the form's current icon and the tip "TaskTray", and
// routes its mouse messages to picHook.
void addtrayicon();
// Operation 1: the form's current icon and the tip "Vexal Barcoding". Called each time the
// form's icon has been changed.
void updateicon();
// Operation 2: the icon goes.
void removetrayicon();

// A mouse message on picHook, the message number as a horizontal position in twips. One
// arriving while another is handled is dropped.
void pichookmousemove(int x);

// The popup menu's entries, connected to mnuPopup by connecttraymenu().
void mnuMainclick();
void mnuSetupclick();
void mnuTransferclick();
void mnuDisplayclick();
void mnuExitclick();
void connecttraymenu();
