#include "gps/gps_reader.hpp"

#include <string>

#include "gps/gps_port.hpp"
#include "gps/line_assembler.hpp"
#include "gps/nmea_line.hpp"
#include "platform/services.hpp"

namespace aerix {

namespace {

constexpr std::u16string_view kRecordingFile = u"\\My Documents\\GpsData.txt";

void Invalidate() {
    if (auto* ui = platform::Sys().ui)
        ui->InvalidateMainWindow(false);
}

}  // namespace

void GpsReaderThread(std::stop_token stop, FeedWiring feed,
                     std::shared_ptr<platform::ByteSource> port, int readTimeoutMs) {
    // A stop request (program exit, a reset) closes the port, which wakes the read.
    std::stop_callback closeOnStop(stop, [&port] { port->Close(); });

    GpsState& gps = feed.gps;
    const bool recording = feed.settings.RecordGpsData != 0;
    if (recording) {
        // A file that cannot be opened is not reported: the writes then simply fail.
        gps.GpsRecording.Open(platform::Sys().root->ResolveForWrite(kRecordingFile),
                              feed.settings.OverwriteGpsData != 0);
    }

    GpsFix fix = gps.PublishedFix.Snapshot();
    LineAssembler assembler;
    std::string record;
    char bytes[256];
    while (port->IsOpen()) {
        int error = 0;
        int n = port->Read(bytes, sizeof bytes, readTimeoutMs, &error);
        if (n < 0) {
            // The recording file stays open until Disconnect closes it.
            ReportCommsError(feed, "Reading comms port.", error);
            return;
        }
        if (n == 0) {
            if (!port->IsOpen())
                break;
            fix.FixVoid = 1;
            gps.PublishedFix.Publish(fix);
            Invalidate();
            continue;
        }
        for (int i = 0; i < n; ++i) {
            if (!assembler.Push(bytes[i]))
                continue;
            std::string_view line = assembler.Line();
            if (recording && IsRmcLine(line)) {
                record.assign(line);
                record += '\n';
                gps.GpsRecording.Write(record);
            }
            if (HandleNmeaLine(line, fix, gps.InstrumentDrawingRunning.load())) {
                gps.PublishedFix.Publish(fix);
                Invalidate();
            }
        }
    }
    if (recording)
        gps.GpsRecording.Close();
}

}  // namespace aerix
