#include "ktAboutDlg.h"

#include "errors.h"
#include "toolbox/system.h"
#include "utilities.h"

void AboutInit()
{
}

void CreditsInit()
{
}

// The version in an alert, where the animated box and its credits panel are to
// go: their name and answer are final, what they show is not.
int16_t HandleAboutDialog()
{
    Str255 version;
    GetAppVersionLongStr(version);
    DoAlert(kNoteAlert, version, ql_quorum_passtr("\r\rFits halftone screens to your printer."),
            ql_quorum_passtr(""), ql_quorum_passtr(""));
    return 1;
}
