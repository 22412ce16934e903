// Numbers of the library's resources; read by the resource compiler too.
#pragma once

// Toolbox bitmaps, one per control, 16 by 15.
#define IDB_TOOLBOX_USCHECKBOX 1001
#define IDB_TOOLBOX_USOPTIONBUTTON 1002
#define IDB_TOOLBOX_USBUTTON 1003
#define IDB_TOOLBOX_USSCROLLBAR 1005
#define IDB_TOOLBOX_USALPHAIMAGE 1006
#define IDB_TOOLBOX_USANIMATEDIMAGE 1007
#define IDB_TOOLBOX_USCALENDAR 1022
#define IDB_TOOLBOX_USTREEVIEW 1023
#define IDB_TOOLBOX_USTOOLBAR 1021
#define IDB_TOOLBOX_USIMAGELIST 1029
#define IDB_TOOLBOX_USLISTBOX 1042
#define IDB_TOOLBOX_USTEXTBOX 1009

#define IDB_TOOLBOX_USLABEL 1045
#define IDB_TOOLBOX_USFLEXGRID 1050
#define IDB_TOOLBOX_USFORM 1061

#define IDB_CHECK_MARKS 101
// PNG files under a resource type of their own, "OPTIONBUTTON".
#define IDP_OPTION_MARKS 101

// What a USImageList shows in the designer: a PNG under RCDATA.
#define IDP_IMAGE_LIST 129

#define IDD_ABOUT 201
