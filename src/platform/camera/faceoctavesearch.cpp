#include "faceoctavesearch.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include <algorithm>
#include <cmath>

namespace kestrum {

namespace {

// Four window sizes per octave, 19 % apart. With three (26 % apart) a face a little larger
// than the window falls between two sizes and gathers too few hits to count.
constexpr int kSizesPerOctave = 4;
const double kWindowScaleStep = std::exp2(1.0 / kSizesPerOctave);

// Overlapping hits a face needs beyond the first, as OpenCV's own search asks. The second
// octave, stepped half as finely each way, gathers a quarter of the hits, and one more
// than the first keeps its faces found.
constexpr int kMinNeighbours = 3;
constexpr int kSecondOctaveMinNeighbours = 1;

constexpr int kHalf = 2;
// Two boxes sharing more than this of the smaller one's area are one face.
constexpr double kSameFaceShare = 0.5;

// The faces of `image` from `smallest` to `largest` (empty: no limit), in the pixels of
// the frame `image` was scaled from.
std::vector<cv::Rect> search(cv::CascadeClassifier& cascade, const cv::Mat& image,
                             const cv::Size& frame, const cv::Size& smallest,
                             const cv::Size& largest, int minNeighbours)
{
    std::vector<cv::Rect> faces;
    cascade.detectMultiScale(image, faces, kWindowScaleStep, minNeighbours, 0, smallest, largest);
    const double scaleX = double(frame.width) / image.cols;
    const double scaleY = double(frame.height) / image.rows;
    for (cv::Rect& box : faces) {
        box = cv::Rect(cvRound(box.x * scaleX), cvRound(box.y * scaleY),
                       cvRound(box.width * scaleX), cvRound(box.height * scaleY));
    }
    return faces;
}

} // namespace

std::vector<cv::Rect> faceOctaveSearch(cv::CascadeClassifier& cascade, const cv::Mat& grey)
{
    const cv::Size window = cascade.getOriginalWindowSize();
    const cv::Size secondOctave = window * kHalf;
    const cv::Size largestOfFirst = secondOctave - cv::Size(1, 1);

    std::vector<cv::Rect> faces =
        search(cascade, grey, grey.size(), window, largestOfFirst, kMinNeighbours);
    const cv::Size halvedSize(grey.cols / kHalf, grey.rows / kHalf);
    if (halvedSize.width < window.width || halvedSize.height < window.height) {
        return faces;
    }
    cv::Mat halved;
    cv::resize(grey, halved, halvedSize, 0, 0, cv::INTER_AREA);
    addOctave(faces, search(cascade, halved, grey.size(), window, largestOfFirst,
                            kSecondOctaveMinNeighbours));
    // From the third octave on, the halved frame's own second octave and beyond.
    addOctave(faces,
              search(cascade, halved, grey.size(), secondOctave, cv::Size(), kMinNeighbours));
    return faces;
}

void addOctave(std::vector<cv::Rect>& faces, const std::vector<cv::Rect>& octave)
{
    for (const cv::Rect& box : octave) {
        const auto known = std::find_if(faces.begin(), faces.end(), [&box](const cv::Rect& face) {
            return (box & face).area() > kSameFaceShare * std::min(box.area(), face.area());
        });
        if (known == faces.end()) {
            faces.push_back(box);
        } else if (box.area() > known->area()) {
            // The smaller box holds a part of the face, or the face tight at a coarser size.
            *known = box;
        }
    }
}

} // namespace kestrum
