>>SOURCE FORMAT IS FREE
identification division.
program-id. freeform.
data division.
working-storage section.
01 first-group. *> a remark with second-item
  05 first-item pic x(10).
  05 second-item pic 9(4) comp.
    88 second-small values 1 thru 9.
01 based-item pic x(8) based.
01 the-pointer usage pointer.
01 text-out pic x(200).
01 text-length pic 9(4).
01 tally-item pic 99.
>>define WANTED
01 switched-on pic x.
>>if NOT-DEFINED is defined
01 switched-off pic x.
>>else
01 switched-else pic x.
>>end-if
procedure division.
main-part.
  move "first-item" to first-item; move first-item to switched-on
  if second-small and first-item = "A" or "B" then
    perform varying second-item from 1 by 1 until second-item > tally-item
      if first-item(1:tally-item) = spaces exit perform end-if
    end-perform
  end-if
  allocate based-item
  set address of based-item to the-pointer
  set the-pointer to address of first-group
  free based-item
  move function reverse(first-item) to text-out(tally-item:second-item)
  compute text-length = function mod(second-item, 7) + function length(first-item)
  inspect first-item replacing all "a" by "b", leading "x" by switched-on
  json generate text-out from first-group count in text-length
  xml generate text-out from first-group count in tally-item
  evaluate second-item
    when 1 when 2 display first-item
    when tally-item thru text-length continue
    when not 7 move 1 to tally-item
  end-evaluate
  goback
  .
