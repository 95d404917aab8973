#pragma once

#include "app/single_instance.h"
#include "app/start_up.h"

namespace porvane {

// The start-up's platform pieces as the desk has them; the windows are added by the program itself.
class SystemStartUp : public StartUpPlatform {
public:
    void enterAppFolder(const QString& appPath) override;
    QString osVersion() override;
    void prepareVisualStyle(const QString& appPath) override;
    bool visualThemeActive() override;
    bool claimSingleInstance() override;
    int screenHeight() override;

private:
    SingleInstance m_instance;
};

} // namespace porvane
