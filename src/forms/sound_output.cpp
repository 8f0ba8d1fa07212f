#include "forms/sound_output.h"

namespace ks {

QStringList soundModuleFiles(const QString& programDirectory) {
    // The loader adds the system's suffix for a module, .so or .dll.
    const QString name = QStringLiteral("/kslaunch-sound");
    QStringList files{programDirectory + name};
#ifdef KS_SOUND_MODULE_DIR
    files << programDirectory + QStringLiteral("/" KS_SOUND_MODULE_DIR) + name;
#endif
    return files;
}

} // namespace ks
