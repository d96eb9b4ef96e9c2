       >>SOURCE FORMAT IS FREE
identification division.
program-id. bkf900.
*> Yearly count: compares the transaction history with the account
*> master. Written in free format when the editor of the new machines
*> came in; kept so. The copybooks are still in fixed format.
*>
*> 2003-01  first version
*> 2006-11  parameter line says from which date to count
environment division.
input-output section.
file-control.
  select history assign to TRANHIST
    file status is status-of-history.
  select accounts assign to ACCTMST
    organization is indexed
    access mode is random
    record key is ac-acct-no
    file status is status-of-accounts.

data division.
file section.
fd history.
01 history-line.
   05 old-movement.
      10 filler           pic x(8).
      10 account-number   pic 9(8).
      10 movement-code    pic x(2).
      10 movement-amount  pic s9(9)v99 comp-3.
      10 movement-date    pic 9(6).
      10 filler           pic x(50).
   05 balance-after       pic s9(9)v99 comp-3.
   05 run-date            pic 9(6).
fd accounts.
       >>SOURCE FORMAT IS FIXED
       COPY BKCACCT REPLACING ==:TAG:== BY ==AC==.
       >>SOURCE FORMAT IS FREE

working-storage section.
01 statuses.
   05 status-of-history   pic xx.
      88 history-ended    value "10".
   05 status-of-accounts  pic xx.
      88 account-there    value "00".
01 parameter-line.
   05 from-date           pic 9(6).
   05 from-parts redefines from-date.
      10 from-yy          pic 99.
      10 from-mm          pic 99.
      10 from-dd          pic 99.
01 last-account           pic 9(8) value zero.
01 last-balance           pic s9(9)v99 comp-3 value zero.
01 wrong-balances         binary-long value 0.
01 per-code.
   05 code-count          pic 9(3) comp-5 value 0.
   05 code-entry occurs 20 times indexed by code-ix.
      10 code-name        pic x(2).
      10 code-number      pic s9(9) comp-5.
      10 code-share       comp-2.
01 all-movements          pic s9(9) comp-5 value 0.
01 message-text           pic x(60).
       >>SOURCE FORMAT IS FIXED
       COPY BKCDATE.
       >>SOURCE FORMAT IS FREE
01 from-long              pic 9(8).

procedure division.
main-line.
  accept parameter-line
  move from-date to dw-short-date
  perform window-short-date
  move dw-long-date to from-long
  open input history accounts
  perform read-history
  perform until history-ended
    move movement-date to dw-short-date
    perform window-short-date
    if dw-long-date >= from-long
      perform count-code
      if account-number not = last-account
        perform check-balance
      end-if
      move account-number to last-account
      move balance-after to last-balance
    end-if
    perform read-history
  end-perform
  perform check-balance
  perform show-codes varying code-ix from 1 by 1 until code-ix > code-count
  close history accounts
  move spaces to message-text
  string "wrong balances: " delimited by size
         function trim(message-text) delimited by size
    into message-text
  display message-text wrong-balances
  stop run.

read-history.
  read history
    at end continue
  end-read.

*> The table is short: a plain search will do.
count-code.
  add 1 to all-movements
  set code-ix to 1
  search code-entry
    at end display "too many codes"
    when code-ix > code-count
      add 1 to code-count
      move movement-code to code-name (code-ix)
      move 1 to code-number (code-ix)
    when code-name (code-ix) = movement-code
      add 1 to code-number (code-ix)
  end-search.

check-balance.
  if last-account not = zero
    move last-account to ac-acct-no
    read accounts
      invalid key
        display "account gone: " last-account
    end-read
    if account-there and ac-balance not = last-balance
      add 1 to wrong-balances
      display "account " ac-acct-no " has " ac-balance
              " history says " last-balance
    end-if
  end-if.

show-codes.
  compute code-share (code-ix) = code-number (code-ix) / all-movements
  display code-name (code-ix) " " code-number (code-ix).

       >>SOURCE FORMAT IS FIXED
       COPY BKCWINDW.
