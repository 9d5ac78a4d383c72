#pragma once

#include "boxsim/acquire/linesilence.h"
#include "boxsim/acquire/modbusline.h"
#include "boxsim/acquire/serialfile.h"
#include "boxsim/acquire/seriallacks.h"
#include "boxsim/acquire/serialsettings.h"

#include <memory>

// A serial line with slaves. After a request without an answer nothing is sent until the line has been silent
// for one more time-out, since a late answer cannot be told from one to the next request.
class ModbusRtuLine : public ModbusLine
{
public:
    // silence is that of the line. tell is called once for each thing that the line cannot do, with the
    // words for it.
    ModbusRtuLine(const QString &path, const SerialSettings &settings, StopFlag *stop,
                  std::shared_ptr<LineSilence> silence, const std::function<void(const QString &)> &tell);
    ~ModbusRtuLine() override;

    QString name() const override { return m_path; }
    int openTimeout() const override { return requestTimeout(); }
    int quietTime() const override { return requestTimeout(); }
    int leastTimeout() const override;
    void close() override;
    void settle() override;

protected:
    Context connect(int timeout, QString *reason) override;
    bool prepare(int timeout, ModbusAnswer *answer) override;
    bool send(const ModbusAsk &ask) override;
    int missingBytes(const QByteArray &answer) const override;
    bool isSound(const QByteArray &answer) const override;
    int transferTime(int dataSize) const override;
    bool isLatest(const QByteArray &) const override { return true; }
    void noteFailure(Failure failure) override;

private:
    Context connectWith(char parity) const;
    void enableRts(modbus_t *context);
    LineSilence::Ending waitForSilence();

    QString m_path;
    SerialSettings m_settings;
    SerialLacks m_lacks;
    SerialFile m_file;
    std::shared_ptr<LineSilence> m_silence;
};
