// The tables that measure prints.
#pragma once

#include <filesystem>

// `riders make` as a process against cp, and making in one process against
// plain system calls.
void measureMake(const std::filesystem::path &riders);
// `riders apply` on a large job against cat, and its memory.
void measureApply(const std::filesystem::path &riders);
// The settings dialog from start to painted, its repaint, a popup, and the list
// of a folder of 10,000 files.
void measureDialogs(const std::filesystem::path &riders);
// The window on a display without a person: its memory, and its processor time
// while idle.
void measureDesktop(const std::filesystem::path &riders);
// The window of a job: from the choice of another riders file or resolution to the picture.
void measureLooking(const std::filesystem::path &riders);
// A spot function of 100 MB imported, against reading it.
void measureImport();
// `riders proof` against one plain Ghostscript run that writes the same plates,
// without and with a spot ink.
void measureProof(const std::filesystem::path &riders);
// The meter on a plate of A4 at 2400 dpi.
void measureMeter();
// A job's time with and without a riders file; jobs of photographs against
// ones with setscreen.
void measureScreenTime(const std::filesystem::path &riders);
// The plates of colour jobs against their sets at three resolutions, every set: half an hour. And a colour job's time
// against one with setcolorscreen, which is also a table by itself. The sample: every fifth set.
void measurePlates(const std::filesystem::path &riders);
void measurePlatesTime(const std::filesystem::path &riders);
void measurePlatesSample(const std::filesystem::path &riders);
// How close the dots on film come to what was asked for, over 90 pairs of
// frequency and angle at three resolutions: minutes. The sample: every seventh.
void measureScreens(const std::filesystem::path &riders);
void measureScreensSample(const std::filesystem::path &riders);
// The dots of films on the same pairs and on all plates of the sets, at eight resolutions: a quarter of an hour. The
// sample: every seventh.
void measureFilmDots(const std::filesystem::path &riders);
void measureFilmDotsSample(const std::filesystem::path &riders);
// `riders film` against plain Ghostscript's dots of the same pages, from A4 at 1200 dpi to A1 at 2400: a quarter of an
// hour. The sample: A4 at 1200 dpi.
void measureFilm(const std::filesystem::path &riders);
void measureFilmSample(const std::filesystem::path &riders);
// The page that zooms in a real browser: time until the sheet is shown, and for a picture while it is dragged, of A4 at
// 1200 dpi and A0 at 2400: a quarter of an hour. The sample: A4.
void measureLoupe(const std::filesystem::path &riders);
void measureLoupeSample(const std::filesystem::path &riders);
// `riders printer`: 500 jobs sent by 20 clients against plain Ghostscript on the same jobs, its memory, and the time from
// the last byte of a job to its films. The sample: 40 jobs.
void measurePrinter(const std::filesystem::path &riders);
void measurePrinterSample(const std::filesystem::path &riders);
