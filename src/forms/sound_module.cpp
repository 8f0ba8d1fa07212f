// The module kslaunch-sound: the launcher's sounds on Qt Multimedia.

#include "forms/sound_output.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QMediaDevices>
#include <QObject>
#include <QPointer>
#include <QSoundEffect>
#include <QUrl>

namespace ks {

class MultimediaSoundOutput : public QObject, public SoundOutput {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KS_SOUND_OUTPUT_IID)
    Q_INTERFACES(ks::SoundOutput)

public:
    std::uint32_t deviceCount() override { return std::uint32_t(QMediaDevices::audioOutputs().size()); }

    void play(const QString& file) override {
        // The effect belongs to the application, so that it goes before the application does.
        if (!effect_) effect_ = new QSoundEffect(QCoreApplication::instance());
        effect_->stop();
        effect_->setSource(QUrl::fromLocalFile(file));
        effect_->play();
    }

private:
    QPointer<QSoundEffect> effect_;
};

} // namespace ks

#include "sound_module.moc"
