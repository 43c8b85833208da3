// The elements of waveform objects (DICOM PS3.6).
#pragma once

#include "host/recording/dicom/data_set.h"

namespace kx::recording {

inline constexpr DicomTag kCharacterSet = 0x00080005;
inline constexpr DicomTag kStudyDate = 0x00080020;
inline constexpr DicomTag kAcquisitionDate = 0x00080022;
inline constexpr DicomTag kContentDate = 0x00080023;
inline constexpr DicomTag kAcquisitionDateTime = 0x0008002A;
inline constexpr DicomTag kStudyTime = 0x00080030;
inline constexpr DicomTag kAcquisitionTime = 0x00080032;
inline constexpr DicomTag kContentTime = 0x00080033;
inline constexpr DicomTag kManufacturer = 0x00080070;
inline constexpr DicomTag kCodeValue = 0x00080100;
inline constexpr DicomTag kCodingScheme = 0x00080102;
inline constexpr DicomTag kCodeMeaning = 0x00080104;
inline constexpr DicomTag kModelName = 0x00081090;

inline constexpr DicomTag kPatientName = 0x00100010;
inline constexpr DicomTag kPatientId = 0x00100020;
inline constexpr DicomTag kBirthDate = 0x00100030;
inline constexpr DicomTag kPatientSex = 0x00100040;
inline constexpr DicomTag kPatientAge = 0x00101010;

inline constexpr DicomTag kSerialNumber = 0x00181000;
inline constexpr DicomTag kSoftwareVersions = 0x00181020;
inline constexpr DicomTag kTimeOffset = 0x00181068;  // ms

inline constexpr DicomTag kOriginality = 0x003A0004;
inline constexpr DicomTag kChannelCount = 0x003A0005;
inline constexpr DicomTag kSampleCount = 0x003A0010;
inline constexpr DicomTag kSamplingFrequency = 0x003A001A;  // Hz
inline constexpr DicomTag kGroupLabel = 0x003A0020;
inline constexpr DicomTag kChannelDefinition = 0x003A0200;
inline constexpr DicomTag kChannelLabel = 0x003A0203;
inline constexpr DicomTag kChannelSource = 0x003A0208;
inline constexpr DicomTag kSensitivity = 0x003A0210;
inline constexpr DicomTag kSensitivityUnits = 0x003A0211;
inline constexpr DicomTag kCorrectionFactor = 0x003A0212;
inline constexpr DicomTag kBaseline = 0x003A0213;
inline constexpr DicomTag kTimeSkew = 0x003A0214;  // s
inline constexpr DicomTag kSampleSkew = 0x003A0215;
inline constexpr DicomTag kLowFrequency = 0x003A0220;
inline constexpr DicomTag kHighFrequency = 0x003A0221;
inline constexpr DicomTag kNotchFrequency = 0x003A0222;

inline constexpr DicomTag kAnnotations = 0x0040B020;
inline constexpr DicomTag kAnnotationText = 0x00700006;

inline constexpr DicomTag kWaveformSequence = 0x54000100;
inline constexpr DicomTag kBitsAllocated = 0x54001004;
inline constexpr DicomTag kSampleInterpretation = 0x54001006;
inline constexpr DicomTag kPadding = 0x5400100A;
inline constexpr DicomTag kWaveformData = 0x54001010;

}  // namespace kx::recording
