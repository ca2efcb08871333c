# Writes OUT, a source with the icon of resources/icon.h, from PICTURES: square PAM files (P7, RGB_ALPHA, 8 bits a
# channel) whose names are their side.
set(tables "")
set(entries "")
foreach(picture IN LISTS PICTURES)
  get_filename_component(side ${picture} NAME_WE)
  file(READ ${picture} bytes HEX)
  string(HEX "WIDTH ${side}\nHEIGHT ${side}\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n" head)
  string(FIND "${bytes}" "${head}" at)
  string(LENGTH "${head}" length)
  math(EXPR start "${at} + ${length}")
  string(SUBSTRING "${bytes}" ${start} -1 pixels)
  string(LENGTH "${pixels}" length)
  math(EXPR wanted "${side} * ${side} * 8")
  if(at EQUAL -1 OR NOT length EQUAL wanted)
    message(FATAL_ERROR "${picture}: not a picture of ${side}x${side} pixels with alpha")
  endif()
  string(REGEX REPLACE "(......)(..)" "0x\\2\\1," pixels "${pixels}")
  string(APPEND tables "constexpr uint32_t kPixels${side}[] = {${pixels}};\n")
  string(APPEND entries "    {${side}, kPixels${side}},\n")
endforeach()
file(WRITE ${OUT} "#include \"resources/icon.h\"\n\nnamespace framereel {\nnamespace {\n${tables}"
     "constexpr IconPicture kPictures[] = {\n${entries}};\n} // namespace\n\n"
     "std::span<const IconPicture> IconPictures() {\n  return kPictures;\n}\n\n} // namespace framereel\n")
