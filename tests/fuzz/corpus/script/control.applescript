property n : 0
global g
on f(a, b)
 if a > b then
 return a - b
 else if a = b then
 return {a, {b}}
 else
 exit repeat
 end if
end f
set g to {}
repeat with i from 1 to 5 by 2
 set g to g & f(i, 3)
end repeat
repeat with x in g
 copy x to n
end repeat
repeat while n < 3
 set n to n + 1
end repeat
repeat 2 times
 try
  error "e" number 5
 on error m number k
  set n to k mod 3
 end try
end repeat
g
