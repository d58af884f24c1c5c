// A field that has another value for a while.
#pragma once

/// Gives a field another value for as long as it lives.
template <typename T>
class Held {
 public:
  Held(T& field, T value) : field_(field), kept_(field) { field = value; }
  ~Held() { field_ = kept_; }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  T& field_;
  T kept_;
};
