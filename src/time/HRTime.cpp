// SPDX-License-Identifier: MIT
#include "HRTime.h"

#include "Calendar.h"
#include "Elapsed.h"
#include "Now.h"

namespace {

std::int64_t Frequency() {
  LARGE_INTEGER frequency = {};
  ::QueryPerformanceFrequency(&frequency);
  return frequency.QuadPart;
}

constexpr std::int64_t kMillisecond = 1'000;
constexpr std::int64_t kSecond = 1'000'000;
constexpr std::int64_t kMinute = 60'000'000;

}  // namespace

void CHRTimePoint::SetNow() {
  CSingleLock guard(&lock_, TRUE);
  LARGE_INTEGER counter = {};
  ::QueryPerformanceCounter(&counter);
  counter_ = counter.QuadPart;
}

std::int64_t CHRTimePoint::Get() const {
  CSingleLock guard(&lock_, TRUE);
  return counter_;
}

void CHRTimePoint::Set(std::int64_t counter) {
  CSingleLock guard(&lock_, TRUE);
  counter_ = counter;
}

CHRTimeSpan::CHRTimeSpan() : frequency_(Frequency()) {
  end_.Set(start_.Get());
}

CHRTimeSpan::CHRTimeSpan(std::int64_t start, std::int64_t end) : frequency_(Frequency()), fixed_(true) {
  start_.Set(start);
  end_.Set(end);
}

bool CHRTimeSpan::IsNull() const {
  CSingleLock guard(&lock_, TRUE);
  return start_.IsNull();
}

void CHRTimeSpan::Clear() {
  CSingleLock guard(&lock_, TRUE);
  start_.Clear();
  end_.Clear();
}

void CHRTimeSpan::Start() {
  CSingleLock guard(&lock_, TRUE);
  start_.SetNow();
  end_.Set(start_.Get());
}

std::int64_t CHRTimeSpan::ElapsedMicroseconds() {
  CSingleLock guard(&lock_, TRUE);
  if (!fixed_) end_.SetNow();
  return hrtime::Microseconds(start_.Get(), end_.Get(), frequency_);
}

int CHRTimeSpan::ElapsedMilliseconds() {
  return hrtime::WholeUnits(ElapsedMicroseconds(), kMillisecond);
}
int CHRTimeSpan::ElapsedSeconds() {
  return hrtime::WholeUnits(ElapsedMicroseconds(), kSecond);
}
int CHRTimeSpan::ElapsedMinutes() {
  return hrtime::WholeUnits(ElapsedMicroseconds(), kMinute);
}
double CHRTimeSpan::ElapsedMillisecondsF() {
  return static_cast<double>(ElapsedMicroseconds()) * 0.001;
}
double CHRTimeSpan::ElapsedSecondsF() {
  return ElapsedMillisecondsF() * 0.001;
}
double CHRTimeSpan::ElapsedMinutesF() {
  return ElapsedSecondsF() / 60.0;
}

CHRTime& CHRTime::operator=(const CHRTime& other) {
  {
    CSingleLock own(&lock_, TRUE);
    CSingleLock others(&other.lock_, TRUE);
    instant_ = other.instant_;
  }
  point_.Set(other.point_.Get());
  return *this;
}

void CHRTime::Clear() {
  CSingleLock guard(&lock_, TRUE);
  instant_ = {};
  point_.Clear();
}

void CHRTime::SetNow() {
  CSingleLock guard(&lock_, TRUE);
  instant_ = hrtime::NowInstant();
  point_.SetNow();
}

hrtime::Instant CHRTime::GetInstant() const {
  CSingleLock guard(&lock_, TRUE);
  return instant_;
}

hrtime::Calendar CHRTime::GetCalendar() const {
  return hrtime::InstantToCalendar(GetInstant());
}
