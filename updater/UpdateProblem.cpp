#include "updater/UpdateProblem.h"

#include <QtGlobal>

namespace tidewell {

namespace {

class UpdateProblems final : public std::error_category {
public:
    const char* name() const noexcept override { return "update"; }
    std::string message(int problem) const override {
        return sentence(static_cast<UpdateProblem>(problem));
    }

private:
    static const char* sentence(UpdateProblem problem) {
        switch (problem) {
        case UpdateProblem::unreachable:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The update server cannot be reached. Check the connection to "
                                     "the internet and try again.");
        case UpdateProblem::untrusted:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The update server could not prove that it is the right one. "
                                     "Nothing was downloaded from it.");
        case UpdateProblem::refused:
            return QT_TRANSLATE_NOOP(
                "SPUStandardUserDriver",
                "The update server does not have what was asked for. Try again later.");
        case UpdateProblem::badRedirect:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The update server points to a place that is not safe. "
                                     "Nothing was downloaded from there.");
        case UpdateProblem::timedOut:
            return QT_TRANSLATE_NOOP(
                "SPUStandardUserDriver",
                "The update server takes too long to answer. Try again later.");
        case UpdateProblem::badFeed:
            return QT_TRANSLATE_NOOP(
                "SPUStandardUserDriver",
                "The update server sent a list of versions that cannot be read.");
        case UpdateProblem::wrongLength:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The downloaded file is not complete, or is not the right "
                                     "one. It was deleted.");
        case UpdateProblem::wrongSignature:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The downloaded file was not made by the developers of this "
                                     "program, or was changed on its way. It was deleted.");
        case UpdateProblem::cannotStore:
            return QT_TRANSLATE_NOOP(
                "SPUStandardUserDriver",
                "The update could not be saved. There may be no space left on the disk.");
        case UpdateProblem::cannotReplace:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "The program's file could not be replaced. You may not have "
                                     "the right to change the folder that it is in.");
        case UpdateProblem::noHandler:
            return QT_TRANSLATE_NOOP(
                "SPUStandardUserDriver",
                "The update was downloaded, but there is no program here to open it with.");
        case UpdateProblem::notStarted:
            return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                     "This program was not set up for updates.");
        case UpdateProblem::broken:
            break;
        }
        return QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                 "A part of this program is missing or broke down.");
    }
};

} // namespace

const std::error_category& updateProblems() {
    static const UpdateProblems category;
    return category;
}

} // namespace tidewell
