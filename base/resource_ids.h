// Numbers of the library's resources; read by the resource compiler too.
#pragma once

// Toolbox bitmaps, one per control, 16 by 15.
#define IDB_TOOLBOX_USCHECKBOX 1001
#define IDB_TOOLBOX_USSCROLLBAR 1005

#define IDB_CHECK_MARKS 101

#define IDD_ABOUT 201
