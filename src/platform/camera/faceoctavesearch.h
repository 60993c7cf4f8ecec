#pragma once

#include <opencv2/core/types.hpp>

#include <vector>

namespace cv {
class CascadeClassifier;
class Mat;
} // namespace cv

namespace kestrum {

/// Every face `cascade` finds in the grey frame, in the frame's pixels: OpenCV's own search
/// over every size from the cascade's window up, but for the second octave of sizes (two
/// to four times the window), which is searched on the frame halved.
///
/// From twice the window on, OpenCV steps the window by one pixel of its scaled frame
/// instead of two, a twentieth of the face instead of a tenth, so that the second octave
/// costs as much as the whole first, and each further octave a quarter of the one below.
/// On the halved frame the second octave is stepped as the first is: a quarter of the
/// cost. The larger faces, which the halved frame holds at its own second octave and
/// beyond, keep the finer step.
std::vector<cv::Rect> faceOctaveSearch(cv::CascadeClassifier& cascade, const cv::Mat& grey);

/// Adds the faces found in one more octave, in the frame's pixels, to those found so far.
/// Two boxes that share more than half of the smaller one are one face, and the larger box
/// stands, as OpenCV's own grouping drops a box inside a larger face.
void addOctave(std::vector<cv::Rect>& faces, const std::vector<cv::Rect>& octave);

} // namespace kestrum
