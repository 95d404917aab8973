#pragma once

#include <QString>

namespace porvane {

// The settings held in memory for the whole run. One-character options are the texts "1" and "0" (one of
// them a letter), compared as text, exactly as they are stored.
struct Settings {
    QString SettingsPassword;
    QString option165;
    QString ckAllowExtCiPW;
    QString ckStartFull;
    QString ckShowToday;
    QString ckCalAOatT;
    QString ckShowSplash;
    QString ckEnbl_RTC;
    QString ckDisSingleD; // DisableSingleDelete
    QString ckDisMultiD;
    QString ckPresvePW;
    QString ckMakeSysRdO; // ReadOnlyMode
    QString ckEnbl_VidConfig;
    QString option484;
    QString ckDisPassPrn;
    QString ckEnbl_BarOP;
    QString ckForceMono;
    QString ckEnbl_PrnFlip;
    QString ckEnbl_PrnLogo;
    QString ckEnblNetPaths;
    QString DataPath;
    QString SystemPath;
    QString SiteName; // the organisation that runs the desk, printed on passes and list titles
    // "1" keeps camera snapshots as captured instead of fitting them to the photo limit.
    QString ckRawCamPhoto;
    // The PostgreSQL server that keeps the bookings; an empty host keeps them in the data folder. The
    // password lies in the enciphered record like SettingsPassword.
    QString ServerHost;
    QString ServerPort; // empty: libpq's own default
    QString ServerDatabase;
    QString ServerUser;
    QString ServerPassword;

    bool ReadOnlyMode() const { return ckMakeSysRdO == u"1"; }
    bool DisableSingleDelete() const { return ckDisSingleD == u"1"; }
    bool usesServer() const { return !ServerHost.isEmpty(); }
};

} // namespace porvane
